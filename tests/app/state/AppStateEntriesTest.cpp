// SPDX-License-Identifier: MIT
#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

class AppStateEntriesTest : public StateTest {
protected:
    AppStateEntriesTest() {
        unlock();
        clock.advance(1h);  // so that what a verb stamps differs from what it found
    }

    Timestamp now() const { return clock.now(); }

    /// Gives "Banka" that many history items, titled "Banka 1" and so on, and the vault that limit.
    void giveHistory(int count, std::int64_t maxItems) {
        state->edit("Hazırlık", [&](KdbxDatabase& database) {
            database.meta.historyMaxItems = maxItems;
            auto& entry = database.root.entries.mutableAt(0);
            for (int number = 1; number <= count; ++number)
                entry.historyItems.append(entryTitled("Banka " + std::to_string(number)));
        });
    }
};

TEST_F(AppStateEntriesTest, anAddedEntryStandsLastInItsGroupAndIsSelected) {
    auto entry = entryTitled("Yeni");
    entry.created = entry.modified = entry.accessed = Timestamp{42};
    state->setSelectedEntryIDs({bank().id, mail().id});

    state->addEntry(entry, social().id);

    EXPECT_THAT(titlesOf(social().entries), ElementsAre("Forum", "Yeni"));
    EXPECT_EQ(social().modified, now());
    EXPECT_EQ(social().entries[1].created, Timestamp{42});
    EXPECT_EQ(social().entries[1].modified, Timestamp{42});
    EXPECT_EQ(social().entries[1].accessed, Timestamp{42});
    EXPECT_THAT(state->selectedEntryIDs(), ElementsAre(entry.id));
    EXPECT_EQ(state->undoLabel(), "Kayıt Ekle");
    EXPECT_TRUE(state->isDirty());
    EXPECT_EQ(files.writes, 0);
}

TEST_F(AppStateEntriesTest, anEntryAddedToNoGroupIsAStepThatAddsNothing) {
    const auto entry = entryTitled("Yeni");

    state->addEntry(entry, UUID::random());

    EXPECT_EQ(root().allEntries().size(), 3U);
    EXPECT_EQ(state->undoLabel(), "Kayıt Ekle");
    EXPECT_TRUE(state->isDirty());
    EXPECT_THAT(state->selectedEntryIDs(), ElementsAre(entry.id));
}

TEST_F(AppStateEntriesTest, undoingAnAdditionTakesTheEntryOutOfTheSelection) {
    state->addEntry(entryTitled("Yeni"), root().id);

    state->undo();

    EXPECT_THAT(titlesOf(root().entries), ElementsAre("Banka", "Posta"));
    EXPECT_TRUE(state->selectedEntryIDs().empty());
    EXPECT_EQ(state->redoLabel(), "Kayıt Ekle");
}

TEST_F(AppStateEntriesTest, anUpdateReplacesTheEntryAndKeepsWhatItWas) {
    auto entry = bank();
    entry.title = "Yeni Banka";
    entry.modified = Timestamp{1};
    const auto before = bank();

    state->updateEntry(entry);

    EXPECT_THAT(titlesOf(root().entries), ElementsAre("Yeni Banka", "Posta"));
    EXPECT_EQ(bank().modified, now());
    ASSERT_EQ(bank().historyItems.size(), 1U);
    EXPECT_EQ(bank().historyItems[0].title, "Banka");
    EXPECT_EQ(bank().historyItems[0].modified, before.modified);
    EXPECT_TRUE(bank().historyItems[0].historyItems.empty());
    EXPECT_EQ(state->undoLabel(), "Kaydı Düzenle");
    EXPECT_TRUE(state->isDirty());
    EXPECT_EQ(files.writes, 0);
}

TEST_F(AppStateEntriesTest, anUpdateWithAnUnchangedEntryStillAddsAHistoryItemAndAStep) {
    state->updateEntry(bank());

    EXPECT_EQ(bank().historyItems.size(), 1U);
    EXPECT_EQ(state->undoLabel(), "Kaydı Düzenle");
}

TEST_F(AppStateEntriesTest, theHistoryOfTheGivenEntryCountsForNothing) {
    giveHistory(2, 10);
    auto entry = bank();
    entry.historyItems = {entryTitled("Uydurma")};

    state->updateEntry(entry);

    EXPECT_THAT(titlesOf(bank().historyItems), ElementsAre("Banka 1", "Banka 2", "Banka"));
}

TEST_F(AppStateEntriesTest, aFullHistoryDropsItsOldestItem) {
    giveHistory(10, 10);

    state->updateEntry(bank());

    ASSERT_EQ(bank().historyItems.size(), 10U);
    EXPECT_EQ(bank().historyItems.front().title, "Banka 2");
    EXPECT_EQ(bank().historyItems.back().title, "Banka");
}

TEST_F(AppStateEntriesTest, aLoweredLimitDropsAllThatIsTooMuch) {
    giveHistory(10, 3);

    state->updateEntry(bank());

    EXPECT_THAT(titlesOf(bank().historyItems), ElementsAre("Banka 9", "Banka 10", "Banka"));
}

TEST_F(AppStateEntriesTest, aLimitOfZeroOrBelowKeepsTheOneItemOfTheUpdate) {
    for (const std::int64_t limit : {std::int64_t{1}, std::int64_t{0}, std::int64_t{-1}, INT64_MIN}) {
        giveHistory(4, limit);

        state->updateEntry(bank());

        EXPECT_THAT(titlesOf(bank().historyItems), ElementsAre("Banka")) << limit;
    }
}

TEST_F(AppStateEntriesTest, theSizeOfTheHistoryIsNotLookedAt) {
    giveHistory(5, 10);
    state->edit("Hazırlık", [](KdbxDatabase& database) { database.meta.historyMaxSize = 0; });

    state->updateEntry(bank());

    EXPECT_EQ(bank().historyItems.size(), 6U);
}

TEST_F(AppStateEntriesTest, anUpdateOfAnUnknownEntryIsAStepThatChangesNothing) {
    state->updateEntry(entryTitled("Yok"));

    EXPECT_THAT(titlesOf(root().entries), ElementsAre("Banka", "Posta"));
    EXPECT_TRUE(bank().historyItems.empty());
    EXPECT_EQ(state->undoLabel(), "Kaydı Düzenle");
    EXPECT_TRUE(state->isDirty());
}

TEST_F(AppStateEntriesTest, anUpdateReachesAnEntryDeepInTheTreeAndLeavesTheSelection) {
    state->setSelectedEntryIDs({bank().id});
    auto entry = forum();
    entry.title = "Pano";
    const auto groupModified = social().modified;

    state->updateEntry(entry);

    EXPECT_EQ(forum().title, "Pano");
    EXPECT_EQ(social().modified, groupModified);
    EXPECT_THAT(state->selectedEntryIDs(), ElementsAre(bank().id));
}

TEST_F(AppStateEntriesTest, undoBringsBackTheEntryAndItsHistory) {
    giveHistory(10, 10);
    auto entry = bank();
    entry.title = "Yeni Banka";
    state->updateEntry(entry);

    state->undo();

    EXPECT_EQ(bank().title, "Banka");
    EXPECT_EQ(bank().historyItems.size(), 10U);
    EXPECT_EQ(bank().historyItems.front().title, "Banka 1");
}

TEST_F(AppStateEntriesTest, deletedEntriesAreGonePastTheRecycleBin) {
    state->edit("Hazırlık", [&](KdbxDatabase& database) {
        database.meta.recycleBinEnabled = true;
        database.meta.recycleBinUUID = database.root.groups[0].id;
    });
    state->setSelectedEntryIDs({mail().id});

    state->deleteEntries({bank().id});

    EXPECT_THAT(titlesOf(root().entries), ElementsAre("Posta"));
    EXPECT_THAT(titlesOf(social().entries), ElementsAre("Forum"));
    EXPECT_TRUE(state->selectedEntryIDs().empty());
    EXPECT_EQ(state->undoLabel(), "Kaydı Sil");
}

TEST_F(AppStateEntriesTest, severalEntriesAreDeletedInOneStepThatCountsThem) {
    state->setSelectedEntryIDs({bank().id, mail().id, forum().id});

    state->deleteEntries(state->selectedEntryIDs());

    EXPECT_EQ(root().allEntries().size(), 0U);
    EXPECT_EQ(state->undoLabel(), "3 Kaydı Sil");
    state->undo();
    EXPECT_EQ(root().allEntries().size(), 3U);
    EXPECT_FALSE(state->canUndo());
}

TEST_F(AppStateEntriesTest, theLabelOfADeletionCountsIdentifiersNotEntries) {
    state->deleteEntries({bank().id, UUID::random()});

    EXPECT_THAT(titlesOf(root().entries), ElementsAre("Posta"));
    EXPECT_EQ(state->undoLabel(), "2 Kaydı Sil");
}

TEST_F(AppStateEntriesTest, deletingNothingIsNoStep) {
    state->setSelectedEntryIDs({bank().id});

    state->deleteEntries({});

    EXPECT_FALSE(state->canUndo());
    EXPECT_FALSE(state->isDirty());
    EXPECT_THAT(state->selectedEntryIDs(), ElementsAre(bank().id));
}

TEST_F(AppStateEntriesTest, deletingAnUnknownEntryIsAStepAndSelectsNone) {
    state->setSelectedEntryIDs({bank().id});

    state->deleteEntries({UUID::random()});

    EXPECT_EQ(root().allEntries().size(), 3U);
    EXPECT_EQ(state->undoLabel(), "Kaydı Sil");
    EXPECT_TRUE(state->selectedEntryIDs().empty());
}

TEST_F(AppStateEntriesTest, aDuplicateIsANewEntryAtTheEndOfTheSameGroup) {
    giveHistory(2, 10);
    state->edit("Hazırlık", [](KdbxDatabase& database) {
        auto& entry = database.root.entries.mutableAt(0);
        entry.accessed = Timestamp{5};
        entry.password = SecureString("gizli");
        entry.customFields = {{"PIN", "1234"}};
        entry.protectedCustomFields = {"PIN"};
        entry.unknownXML = {"<x/>"};
    });
    const auto groupModified = root().modified;
    const auto original = bank();

    state->duplicateEntries({bank().id});

    EXPECT_THAT(titlesOf(root().entries), ElementsAre("Banka", "Posta", "Banka kopya"));
    const auto& copy = root().entries[2];
    EXPECT_NE(copy.id, original.id);
    EXPECT_EQ(copy.created, now());
    EXPECT_EQ(copy.modified, now());
    EXPECT_EQ(copy.accessed, Timestamp{5});
    EXPECT_EQ(copy.password, SecureString("gizli"));
    EXPECT_EQ(copy.customFields, original.customFields);
    EXPECT_EQ(copy.protectedCustomFields, original.protectedCustomFields);
    EXPECT_EQ(copy.unknownXML, original.unknownXML);
    EXPECT_TRUE(copy.historyItems.empty());
    EXPECT_EQ(bank().historyItems.size(), 2U);
    EXPECT_EQ(root().modified, groupModified);
    EXPECT_THAT(state->selectedEntryIDs(), ElementsAre(copy.id));
    EXPECT_EQ(state->undoLabel(), "Kaydı Çoğalt");
}

TEST_F(AppStateEntriesTest, severalEntriesAreDuplicatedEachInItsOwnGroup) {
    state->duplicateEntries({bank().id, forum().id});

    EXPECT_THAT(titlesOf(root().entries), ElementsAre("Banka", "Posta", "Banka kopya"));
    EXPECT_THAT(titlesOf(social().entries), ElementsAre("Forum", "Forum kopya"));
    EXPECT_THAT(state->selectedEntryIDs(), UnorderedElementsAre(root().entries[2].id, social().entries[1].id));
    EXPECT_EQ(state->undoLabel(), "Kayıtları Çoğalt");
}

TEST_F(AppStateEntriesTest, duplicatingAnUnknownEntryIsAStepThatSelectsNone) {
    state->setSelectedEntryIDs({bank().id});

    state->duplicateEntries({UUID::random()});

    EXPECT_EQ(root().allEntries().size(), 3U);
    EXPECT_EQ(state->undoLabel(), "Kaydı Çoğalt");
    EXPECT_TRUE(state->selectedEntryIDs().empty());
}

TEST_F(AppStateEntriesTest, duplicatingNothingIsNoStep) {
    state->setSelectedEntryIDs({bank().id});

    state->duplicateEntries({});

    EXPECT_FALSE(state->canUndo());
    EXPECT_THAT(state->selectedEntryIDs(), ElementsAre(bank().id));
}

TEST_F(AppStateEntriesTest, movedEntriesStandLastInTheOtherGroupAndStaySelected) {
    state->setSelectedEntryIDs({bank().id});
    const auto entry = bank();
    const auto sourceModified = root().modified;

    state->moveEntriesTo({bank().id}, social().id);

    EXPECT_THAT(titlesOf(root().entries), ElementsAre("Posta"));
    EXPECT_THAT(titlesOf(social().entries), ElementsAre("Forum", "Banka"));
    EXPECT_EQ(social().entries[1].modified, entry.modified);
    EXPECT_TRUE(social().entries[1].historyItems.empty());
    EXPECT_EQ(social().modified, now());
    EXPECT_EQ(root().modified, sourceModified);
    EXPECT_THAT(state->selectedEntryIDs(), ElementsAre(entry.id));
    EXPECT_EQ(state->undoLabel(), "Kayıtları Taşı");
}

TEST_F(AppStateEntriesTest, movedEntriesKeepTheirOrderInTheVault) {
    state->moveEntriesTo({mail().id, bank().id}, social().id);

    EXPECT_THAT(titlesOf(social().entries), ElementsAre("Forum", "Banka", "Posta"));
}

TEST_F(AppStateEntriesTest, anEntryMovedToItsOwnGroupGoesToItsEnd) {
    state->moveEntriesTo({bank().id}, root().id);

    EXPECT_THAT(titlesOf(root().entries), ElementsAre("Posta", "Banka"));
}

TEST_F(AppStateEntriesTest, movingNothingOrUnknownEntriesIsNoStep) {
    state->moveEntriesTo({}, social().id);
    state->moveEntriesTo({UUID::random()}, social().id);

    EXPECT_FALSE(state->canUndo());
    EXPECT_FALSE(state->isDirty());
}

TEST_F(AppStateEntriesTest, entriesMovedToNoGroupAreLostUntilUndo) {
    state->moveEntriesTo({bank().id, UUID::random()}, UUID::random());

    EXPECT_THAT(titlesOf(root().entries), ElementsAre("Posta"));
    EXPECT_EQ(root().allEntries().size(), 2U);
    state->undo();
    EXPECT_THAT(titlesOf(root().entries), ElementsAre("Banka", "Posta"));
}

TEST_F(AppStateEntriesTest, onlyAnUpdateMakesHistory) {
    state->duplicateEntries({bank().id});
    state->moveEntriesTo({bank().id}, social().id);
    state->moveEntriesToEnd({mail().id});
    state->copyPassword(&mail());

    for (const auto& entry : root().allEntries())
        EXPECT_TRUE(entry.historyItems.empty()) << entry.title;
}

TEST_F(AppStateEntriesTest, whileLockedNoVerbBringsAVaultOrAStep) {
    const auto id = bank().id;
    const auto groupID = social().id;
    const auto entry = entryTitled("Yeni");
    state->lock();

    state->updateEntry(entry);
    state->moveEntriesBefore({id}, entry.id);
    state->moveEntriesToEnd({id});
    state->duplicateEntries({id});
    state->moveEntriesTo({id}, groupID);

    EXPECT_FALSE(state->database().has_value());
    EXPECT_FALSE(state->canUndo());
    EXPECT_FALSE(state->isDirty());
    EXPECT_TRUE(state->selectedEntryIDs().empty());
    EXPECT_EQ(state->statusMessage(), std::nullopt);
}

TEST_F(AppStateEntriesTest, whileLockedAnAdditionStillSelectsAndADeletionStillSelectsNone) {
    const auto entry = entryTitled("Yeni");
    const auto groupID = root().id;
    state->lock();

    state->addEntry(entry, groupID);
    EXPECT_THAT(state->selectedEntryIDs(), ElementsAre(entry.id));

    state->deleteEntries({entry.id});
    EXPECT_TRUE(state->selectedEntryIDs().empty());
    EXPECT_FALSE(state->canUndo());
}

TEST_F(AppStateEntriesTest, aVerbNotifiesTheViewsWhenItHasEnded) {
    std::vector<std::string> heard;
    QObject::connect(&*state, &AppState::databaseChanged, [&] {
        heard.push_back("vault");
        EXPECT_THAT(state->selectedEntryIDs(), ElementsAre(root().entries[2].id));
        EXPECT_EQ(state->undoLabel(), "Kayıt Ekle");
    });
    QObject::connect(&*state, &AppState::selectedEntryIDsChanged, [&] { heard.push_back("selection"); });

    state->addEntry(entryTitled("Yeni"), root().id);

    EXPECT_THAT(heard, ElementsAre("vault", "selection"));
}

}  // namespace
