// SPDX-License-Identifier: MIT
#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

namespace {

using ::testing::ElementsAre;
using ::testing::Optional;
using ::testing::StrEq;

class AppStateEntriesTest : public StateTest {
protected:
    AppStateEntriesTest() { unlock(); }

    const KdbxEntry& first() const { return state->root()->entries[0]; }

    void retitle(const std::string& title) {
        auto entry = first();
        entry.title = title;
        state->updateEntry(entry);
    }

    void setHistoryLimit(std::int64_t limit) {
        state->edit("Adım", [&](KdbxDatabase& database) { database.meta.historyMaxItems = limit; });
    }

    std::vector<std::string> historyTitles() const {
        std::vector<std::string> titles;
        for (const auto& item : first().historyItems)
            titles.push_back(item.title);
        return titles;
    }
};

TEST_F(AppStateEntriesTest, anUpdatedEntryIsAStepWithItsTimeAndItsHistory) {
    const auto before = first();
    clock.advance(std::chrono::hours(1));

    retitle("Yeni ad");

    EXPECT_EQ(first().title, "Yeni ad");
    EXPECT_EQ(first().modified, clock.now());
    EXPECT_THAT(state->undoLabel(), Optional(StrEq("Kaydı Düzenle")));
    EXPECT_TRUE(state->isDirty());
    EXPECT_THAT(historyTitles(), ElementsAre("Banka"));
    EXPECT_EQ(first().historyItems[0].modified, before.modified);
}

TEST_F(AppStateEntriesTest, anUpdateThatChangesNothingIsAStepWithHistoryAllTheSame) {
    state->updateEntry(first());
    EXPECT_THAT(historyTitles(), ElementsAre("Banka"));
    EXPECT_TRUE(state->canUndo());
}

TEST_F(AppStateEntriesTest, historyRunsOldestFirstAndHoldsNoHistoryItself) {
    retitle("Bir");
    retitle("İki");
    EXPECT_THAT(historyTitles(), ElementsAre("Banka", "Bir"));
    for (const auto& item : first().historyItems)
        EXPECT_TRUE(item.historyItems.empty());
}

TEST_F(AppStateEntriesTest, theHistoryOfTheGivenEntryIsIgnored) {
    auto entry = first();
    entry.historyItems = {entryNamed("uydurma")};
    state->updateEntry(entry);
    EXPECT_THAT(historyTitles(), ElementsAre("Banka"));
}

TEST_F(AppStateEntriesTest, aFullHistoryDropsItsOldestItem) {
    for (int number = 1; number <= 10; ++number)
        retitle(std::to_string(number));
    ASSERT_EQ(historyTitles().size(), 10U);
    retitle("11");
    EXPECT_EQ(historyTitles().size(), 10U);
    EXPECT_EQ(historyTitles().front(), "1");
    EXPECT_EQ(historyTitles().back(), "10");
}

TEST_F(AppStateEntriesTest, aLimitOfNothingOrLessKeepsTheItemOfTheUpdate) {
    for (const std::int64_t limit : {0, -1}) {
        retitle("a");
        retitle("b");
        setHistoryLimit(limit);
        retitle("c");
        EXPECT_THAT(historyTitles(), ElementsAre("b")) << limit;
        setHistoryLimit(10);
    }
}

TEST_F(AppStateEntriesTest, anEntryThatIsGoneChangesNothingButIsAStep) {
    state->updateEntry(entryNamed("yok"));
    EXPECT_EQ(first().title, "Banka");
    EXPECT_TRUE(state->canUndo());
}

}  // namespace
