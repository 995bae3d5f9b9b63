// SPDX-License-Identifier: MIT
#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

#include <new>

namespace {

using ::testing::Optional;
using ::testing::StrEq;

constexpr auto none = std::nullopt;

class AppStateUndoTest : public StateTest {
protected:
    AppStateUndoTest() { unlock(); }

    static std::string numbered(int number) { return "Adım " + std::to_string(number); }
};

TEST_F(AppStateUndoTest, anEditChangesMemoryAndNotTheFile) {
    rename("Yeni ad");

    EXPECT_EQ(firstTitle(), "Yeni ad");
    EXPECT_TRUE(state->isDirty());
    EXPECT_THAT(state->undoLabel(), Optional(StrEq("Kaydı Düzenle")));
    EXPECT_FALSE(state->redoLabel());
    EXPECT_TRUE(state->canUndo());
    EXPECT_FALSE(state->canRedo());
    EXPECT_EQ(files.writes, 0);
}

TEST_F(AppStateUndoTest, whileLockedAnEditDoesNotRun) {
    state->lock();
    bool hasRun = false;
    state->edit("Adım", [&](KdbxDatabase&) { hasRun = true; });
    EXPECT_FALSE(hasRun);
    EXPECT_FALSE(state->canUndo());
    EXPECT_FALSE(state->isDirty());
}

TEST_F(AppStateUndoTest, anEditThatChangesNothingIsAStepAllTheSame) {
    state->edit("Adım", [](KdbxDatabase&) {});
    EXPECT_TRUE(state->isDirty());
    EXPECT_THAT(state->undoLabel(), Optional(StrEq("Adım")));
}

TEST_F(AppStateUndoTest, anEditLeavesTheSelectionAlone) {
    const auto selected = std::set{state->root()->entries[1].id};
    state->setSelectedEntryIDs(selected);
    rename("Yeni ad");
    EXPECT_EQ(state->selectedEntryIDs(), selected);
}

TEST_F(AppStateUndoTest, undoingAndRedoingSwapTheVaultAndKeepTheStepsName) {
    rename("Yeni ad");

    state->undo();
    EXPECT_EQ(firstTitle(), "Banka");
    EXPECT_FALSE(state->undoLabel());
    EXPECT_THAT(state->redoLabel(), Optional(StrEq("Kaydı Düzenle")));

    state->redo();
    EXPECT_EQ(firstTitle(), "Yeni ad");
    EXPECT_THAT(state->undoLabel(), Optional(StrEq("Kaydı Düzenle")));
    EXPECT_FALSE(state->redoLabel());

    state->undo();
    EXPECT_EQ(firstTitle(), "Banka");
    EXPECT_THAT(state->redoLabel(), Optional(StrEq("Kaydı Düzenle")));
}

TEST_F(AppStateUndoTest, undoingBackToTheSavedStateIsStillUnsaved) {
    rename("Yeni ad");
    state->undo();
    EXPECT_TRUE(state->isDirty());
    state->save();
    EXPECT_EQ(files.writes, 1);
}

TEST_F(AppStateUndoTest, undoingRightAfterASaveMakesTheVaultDirty) {
    rename("Yeni ad");
    state->save();
    ASSERT_FALSE(state->isDirty());
    state->undo();
    EXPECT_TRUE(state->isDirty());
}

TEST_F(AppStateUndoTest, savingDoesNotTouchTheStacks) {
    rename("Bir");
    rename("İki");
    state->undo();
    state->save();
    EXPECT_TRUE(state->canUndo());
    EXPECT_TRUE(state->canRedo());
}

TEST_F(AppStateUndoTest, fiftyStepsAreKeptAndTheOldestGoesFirst) {
    for (int step = 1; step <= 51; ++step)
        rename(numbered(step));
    for (int step = 1; step <= 50; ++step) {
        ASSERT_TRUE(state->canUndo());
        state->undo();
    }
    EXPECT_EQ(firstTitle(), numbered(1));
    EXPECT_FALSE(state->canUndo());

    state->undo();
    EXPECT_EQ(firstTitle(), numbered(1));
    for (int step = 1; step <= 50; ++step)
        state->redo();
    EXPECT_EQ(firstTitle(), numbered(51));
    EXPECT_FALSE(state->canRedo());
}

TEST_F(AppStateUndoTest, aNewEditForgetsWhatCouldBeRedone) {
    rename("Bir");
    state->undo();
    bool couldRedo = true;
    state->edit("Yeni adım", [&](KdbxDatabase&) { couldRedo = state->canRedo(); });
    EXPECT_FALSE(couldRedo) << "before the body runs";
    EXPECT_FALSE(state->canRedo());
    EXPECT_FALSE(state->redoLabel());
    state->redo();
    EXPECT_THAT(state->undoLabel(), Optional(StrEq("Yeni adım")));
}

TEST_F(AppStateUndoTest, undoingBringsTheSortColumnBackAndKeepsTheDirection) {
    state->setSort({.column = EntrySort::Column::manual, .ascending = true});
    rename("Yeni ad");
    state->setSort({.column = EntrySort::Column::title, .ascending = false});

    state->undo();
    EXPECT_EQ(state->sort(), (EntrySort{.column = EntrySort::Column::manual, .ascending = false}));
    EXPECT_EQ(preferences->sortColumn(), "manual");
    EXPECT_FALSE(preferences->sortAscending());

    state->redo();
    EXPECT_EQ(state->sort(), (EntrySort{.column = EntrySort::Column::title, .ascending = false}));
}

TEST_F(AppStateUndoTest, undoingTheCreationOfTheSelectedGroupSelectsTheRoot) {
    const auto group = groupNamed("Yeni");
    state->edit("Grup Ekle", [&](KdbxDatabase& database) { database.root.groups.append(group); });
    state->setSelectedGroupID(group.id);

    state->undo();

    EXPECT_EQ(state->selectedGroupID(), state->root()->id);
}

TEST_F(AppStateUndoTest, undoingLeavesNoGroupSelectedWhereNoneWas) {
    rename("Yeni ad");
    state->setSelectedGroupID(none);
    state->undo();
    EXPECT_FALSE(state->selectedGroupID());
}

TEST_F(AppStateUndoTest, undoingTheCreationOfAnEntryDeselectsItAlone) {
    const auto kept = state->root()->groups[0].entries[0].id;
    const auto entry = entryTitled("Yeni");
    state->edit("Kayıt Ekle", [&](KdbxDatabase& database) { database.root.entries.append(entry); });
    state->setSelectedEntryIDs({entry.id, kept});

    state->undo();

    EXPECT_EQ(state->selectedEntryIDs(), std::set{kept});
}

TEST_F(AppStateUndoTest, undoingTouchesNeitherSheetNorSearch) {
    rename("Yeni ad");
    state->setSearchText("arama");
    state->setRoute(AppState::Route::generator(none));
    state->undo();
    EXPECT_EQ(state->searchText(), "arama");
    EXPECT_EQ(state->route(), AppState::Route::generator(none));
}

TEST_F(AppStateUndoTest, aStepUndoneAfterTheVaultWentIsGone) {
    rename("Yeni ad");
    state->prepare(vaultFile);
    ASSERT_TRUE(state->canUndo());

    state->undo();

    EXPECT_FALSE(state->canUndo());
    EXPECT_FALSE(state->canRedo());
    EXPECT_FALSE(state->database());
}

TEST_F(AppStateUndoTest, aSessionDroppedForAnotherFileKeepsTheNamesOfItsSteps) {
    rename("Bir");
    rename("İki");
    state->undo();

    state->prepare(otherFile);

    EXPECT_THAT(state->undoLabel(), Optional(StrEq("Kaydı Düzenle")));
    EXPECT_THAT(state->redoLabel(), Optional(StrEq("Kaydı Düzenle")));
    EXPECT_TRUE(state->canUndo());
    EXPECT_TRUE(state->canRedo());
}

TEST_F(AppStateUndoTest, aStepOfAnotherVaultRestoresNothing) {
    state->setSort({.column = EntrySort::Column::manual, .ascending = true});
    rename("Bir");
    rename("İki");
    state->undo();
    state->setSort({.column = EntrySort::Column::title, .ascending = true});
    state->createDatabase(otherFile, "parola", none);
    ASSERT_THAT(state->undoLabel(), Optional(StrEq("Kaydı Düzenle")));
    ASSERT_THAT(state->redoLabel(), Optional(StrEq("Kaydı Düzenle")));

    state->undo();
    state->redo();
    state->redo();

    EXPECT_EQ(state->root()->name, "İş");
    EXPECT_EQ(state->root()->groups.size(), 3);
    EXPECT_FALSE(state->isDirty());
    EXPECT_EQ(state->sort().column, EntrySort::Column::title);
    EXPECT_FALSE(state->canRedo());
}

TEST_F(AppStateUndoTest, stepsOfAnotherVaultLieUnderThoseOfTheNewOne) {
    rename("Bir");
    state->createDatabase(otherFile, "parola", none);
    state->edit("Grup Ekle", [](KdbxDatabase& database) { database.root.groups.append(groupNamed("Yeni")); });

    state->undo();
    EXPECT_EQ(state->root()->groups.size(), 3);
    state->undo();
    EXPECT_EQ(state->root()->groups.size(), 3);
    EXPECT_FALSE(state->canUndo());

    state->redo();
    EXPECT_EQ(state->root()->groups.size(), 3);
    state->redo();
    EXPECT_EQ(state->root()->groups.size(), 4);
}

TEST_F(AppStateUndoTest, aVaultThatCannotBeMadeLeavesTheStepsOfTheOpenOne) {
    rename("Bir");
    files.unwritable[otherFile] = "“İş.kdbx” kaydedilemedi.";
    state->createDatabase(otherFile, "parola", none);

    state->undo();

    EXPECT_EQ(firstTitle(), "Banka");
}

TEST_F(AppStateUndoTest, whenMemoryRunsShortInAnEditTheVaultStandsAsItWas) {
    state->edit("Adım", [](KdbxDatabase& database) {
        database.root.name = "yarım";
        throw std::bad_alloc();
    });

    EXPECT_THAT(state->lastError(), Optional(StrEq("Bu işlem için yeterli bellek yok.")));
    EXPECT_EQ(state->root()->name, "Kök");
    EXPECT_FALSE(state->isDirty());
    EXPECT_FALSE(state->canUndo());
    EXPECT_FALSE(state->undoLabel());
}

TEST_F(AppStateUndoTest, whenMemoryRunsShortInAnEditTheOldestStepIsKept) {
    for (int step = 1; step <= 51; ++step)
        rename(numbered(step));

    for (int attempt = 0; attempt < 3; ++attempt)
        state->edit("Adım", [](KdbxDatabase&) { throw std::bad_alloc(); });

    for (int step = 1; step <= 50; ++step)
        state->undo();
    EXPECT_EQ(firstTitle(), numbered(1));
}

TEST_F(AppStateUndoTest, whenMemoryRunsShortInAnEditWhatCanBeRedoneIsKept) {
    rename("Bir");
    state->undo();

    state->edit("Adım", [](KdbxDatabase&) { throw std::bad_alloc(); });

    EXPECT_THAT(state->redoLabel(), Optional(StrEq("Kaydı Düzenle")));
    state->redo();
    EXPECT_EQ(firstTitle(), "Bir");
}

TEST_F(AppStateUndoTest, aSnapshotIsIndependentOfWhatFollows) {
    rename("Bir");
    rename("İki");
    rename("Üç");
    state->undo();
    EXPECT_EQ(firstTitle(), "İki");
    state->undo();
    EXPECT_EQ(firstTitle(), "Bir");
    state->undo();
    EXPECT_EQ(firstTitle(), "Banka");
}

}  // namespace
