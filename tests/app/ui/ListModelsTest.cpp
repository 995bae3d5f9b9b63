// SPDX-License-Identifier: MIT
#include "app/ui/entries/EntryListModel.h"
#include "app/ui/groups/GroupTreeModel.h"
#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace {

using ::testing::ElementsAre;

class ListModelsTest : public StateTest {
protected:
    EntryListModel entries;
    GroupTreeModel groups;
    QAbstractItemModelTester entriesTester{&entries, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QAbstractItemModelTester groupsTester{&groups, QAbstractItemModelTester::FailureReportingMode::Fatal};

    ListModelsTest() {
        unlock();
        showAll();
    }

    void showAll() {
        entries.show(state->database(), state->visibleEntries());
        groups.show(state->database());
    }

    static std::vector<std::string> texts(const QAbstractItemModel& model, int role = Qt::DisplayRole) {
        std::vector<std::string> texts;
        for (int row = 0; row < model.rowCount(); ++row)
            texts.push_back(model.index(row, 0).data(role).toString().toStdString());
        return texts;
    }

    void change(const std::function<void(KdbxEntry&)>& body) {
        state->edit("Adım", [&](KdbxDatabase& database) { database.root.entries.mutate(0, body); });
        showAll();
    }
};

TEST_F(ListModelsTest, rowsSpeakTheirTitleAndWhatStandsBeneath) {
    change([](KdbxEntry& entry) {
        entry.username = "ayşe";
        entry.url = "https://banka.example/giris";
    });
    EXPECT_THAT(texts(entries), ElementsAre("Banka", "Posta"));
    EXPECT_THAT(texts(entries, Qt::AccessibleTextRole), ElementsAre("Banka", "Posta"));
    EXPECT_THAT(texts(entries, EntryListModel::subtitleRole), ElementsAre("ayşe  ·  banka.example", "—"));
    EXPECT_THAT(texts(entries, Qt::AccessibleDescriptionRole), ElementsAre("ayşe  ·  banka.example", "—"));
}

TEST_F(ListModelsTest, theBeginningOfARowHasTheFirstLettersOfItsText) {
    for (const auto* title : {"Banka", "şğüıİö şehir", "字字字字字", "😀a😀b", "é́́é", "", "x"}) {
        state->setSort({.column = EntrySort::Column::manual, .ascending = true});
        change([&](KdbxEntry& entry) { entry.title = title; });
        const auto text = entries.index(0).data().toString();
        for (qsizetype length = 1; length <= text.size(); ++length)
            EXPECT_EQ(entries.beginningOf(0, length).left(length), text.left(length)) << title << ' ' << length;
    }
    EXPECT_EQ(groups.beginningOf(0, 1), groups.index(0).data().toString());
}

TEST_F(ListModelsTest, anAddressWithoutAHostShowsAsItStands) {
    change([](KdbxEntry& entry) { entry.url = "komşu bilgisayar"; });
    EXPECT_EQ(texts(entries, EntryListModel::subtitleRole)[0], "komşu bilgisayar");
}

TEST_F(ListModelsTest, anUntitledAndAnExpiredEntryAreReported) {
    state->setSort({.column = EntrySort::Column::manual, .ascending = true});
    change([](KdbxEntry& entry) {
        entry.title = "";
        entry.expires = true;
        entry.expiryTime = Timestamp{0};
    });
    EXPECT_EQ(texts(entries)[0], "Adsız kayıt");
    EXPECT_TRUE(entries.index(0).data(EntryListModel::isExpiredRole).toBool());
    EXPECT_EQ(texts(entries, Qt::AccessibleDescriptionRole)[0], "—, Süresi dolmuş");
}

TEST_F(ListModelsTest, aChangedEntryIsAChangeOfItsRowAlone) {
    QSignalSpy changes(&entries, &EntryListModel::dataChanged);
    QSignalSpy resets(&entries, &EntryListModel::modelReset);
    change([](KdbxEntry& entry) { entry.title = "Bankam"; });
    EXPECT_THAT(texts(entries), ElementsAre("Bankam", "Posta"));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(changes[0][0].toModelIndex().row(), 0);
    EXPECT_TRUE(resets.isEmpty());
}

TEST_F(ListModelsTest, entriesThatComeAndGoAreReportedOneByOne) {
    QSignalSpy resets(&entries, &EntryListModel::modelReset);
    QSignalSpy inserts(&entries, &EntryListModel::rowsInserted);
    QSignalSpy removals(&entries, &EntryListModel::rowsRemoved);
    for (const auto* const title : {"Anahtar", "Kargo", "Zil"})
        state->addEntry(entryTitled(title), state->root()->id);
    showAll();
    EXPECT_THAT(texts(entries), ElementsAre("Anahtar", "Banka", "Kargo", "Posta", "Zil"));
    EXPECT_EQ(inserts.count(), 3);

    state->deleteEntries({entries.entry(0).id, entries.entry(2).id, entries.entry(3).id});
    showAll();
    EXPECT_THAT(texts(entries), ElementsAre("Banka", "Zil"));
    EXPECT_EQ(removals.count(), 2);
    state->undo();
    showAll();
    EXPECT_THAT(texts(entries), ElementsAre("Anahtar", "Banka", "Kargo", "Posta", "Zil"));
    EXPECT_TRUE(resets.isEmpty());
}

TEST_F(ListModelsTest, aRenamedEntryMovesWithItsRow) {
    state->addEntry(entryTitled("Kargo"), state->root()->id);
    showAll();
    const QPersistentModelIndex bank = entries.index(0);
    QSignalSpy moves(&entries, &EntryListModel::rowsMoved);
    change([](KdbxEntry& entry) { entry.title = "Zeytin"; });
    EXPECT_THAT(texts(entries), ElementsAre("Kargo", "Posta", "Zeytin"));
    EXPECT_EQ(bank.row(), 2);
    change([](KdbxEntry& entry) { entry.title = "Armut"; });
    EXPECT_THAT(texts(entries), ElementsAre("Armut", "Kargo", "Posta"));
    EXPECT_EQ(bank.row(), 0);
    EXPECT_EQ(moves.count(), 2);
}

TEST_F(ListModelsTest, aListInQuiteAnotherOrderIsReported) {
    QSignalSpy resets(&entries, &EntryListModel::modelReset);
    for (const auto* const title : {"Anahtar", "Kargo", "Zil"})
        state->addEntry(entryTitled(title), state->root()->id);
    showAll();
    state->setSort({.column = EntrySort::Column::title, .ascending = false});
    showAll();
    EXPECT_THAT(texts(entries), ElementsAre("Zil", "Posta", "Kargo", "Banka", "Anahtar"));
    EXPECT_EQ(resets.count(), 1);
}

TEST_F(ListModelsTest, aGroupThatOpensAndClosesKeepsTheOtherRows) {
    QSignalSpy resets(&groups, &GroupTreeModel::modelReset);
    const QPersistentModelIndex root = groups.index(0);
    state->setGroupExpanded(state->root()->id, false);
    showAll();
    EXPECT_TRUE(root.isValid());
    state->setGroupExpanded(state->root()->id, true);
    showAll();
    EXPECT_THAT(texts(groups), ElementsAre("Kök", "Sosyal"));
    EXPECT_TRUE(resets.isEmpty());
    EXPECT_EQ(groups.parentOf(1), 0);
    EXPECT_FALSE(groups.parentOf(0));
}

TEST_F(ListModelsTest, whatIsShownOutlivesTheVaultItCameFrom) {
    state->lock();
    EXPECT_THAT(texts(entries), ElementsAre("Banka", "Posta"));
    EXPECT_THAT(texts(groups), ElementsAre("Kök", "Sosyal"));
    showAll();
    EXPECT_EQ(entries.rowCount(), 0);
    EXPECT_EQ(groups.rowCount(), 0);
}

TEST_F(ListModelsTest, aRowIsFoundByItsEntry) {
    EXPECT_EQ(entries.rowOf(entries.entry(1).id), 1);
    EXPECT_FALSE(entries.rowOf(UUID::random()));
    EXPECT_EQ(groups.rowOf(groups.group(1).id), 1);
    EXPECT_FALSE(groups.rowOf(UUID::random()));
}

TEST_F(ListModelsTest, groupsCountWhatLiesBelowThemAlsoWhereItIsHidden) {
    EXPECT_THAT(texts(groups), ElementsAre("Kök", "Sosyal"));
    EXPECT_THAT(texts(groups, GroupTreeModel::countRole), ElementsAre("3", "1"));
    EXPECT_THAT(texts(groups, GroupTreeModel::depthRole), ElementsAre("0", "1"));
    EXPECT_TRUE(groups.index(0).data(GroupTreeModel::hasChildrenRole).toBool());
    EXPECT_FALSE(groups.index(1).data(GroupTreeModel::hasChildrenRole).toBool());

    state->setGroupExpanded(state->root()->id, false);
    showAll();
    EXPECT_THAT(texts(groups), ElementsAre("Kök"));
    EXPECT_THAT(texts(groups, GroupTreeModel::countRole), ElementsAre("3"));
}

TEST_F(ListModelsTest, anUnnamedGroupIsNamed) {
    state->edit("Adım", [](KdbxDatabase& database) { database.root.name = ""; });
    showAll();
    EXPECT_EQ(texts(groups)[0], "Adsız grup");
}

TEST_F(ListModelsTest, groupsSpeakTheirCount) {
    EXPECT_THAT(texts(groups, Qt::AccessibleDescriptionRole), ElementsAre("3 kayıt, düzey 1", "1 kayıt, düzey 2"));
}

TEST_F(ListModelsTest, aTreeOfAnyDepthShows) {
    state->edit("Adım", [](KdbxDatabase& database) {
        auto group = groupNamed("en alt");
        group.entries = {entryTitled("derin")};
        for (int depth = 0; depth < 5000; ++depth) {
            auto above = groupNamed("kat");
            above.groups.append(std::move(group));
            group = std::move(above);
        }
        database.root.groups = {std::move(group)};
    });
    showAll();
    EXPECT_EQ(groups.rowCount(), 5002);
    EXPECT_EQ(texts(groups, GroupTreeModel::countRole).front(), "3");
    state->lock();
    showAll();
}

}  // namespace
