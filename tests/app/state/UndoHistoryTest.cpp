// SPDX-License-Identifier: MIT
#include "app/state/UndoHistory.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using Direction = UndoHistory::Direction;

constexpr auto byTitle = EntrySort::Column::title;
constexpr auto manual = EntrySort::Column::manual;

KdbxDatabase vaultNamed(const std::string& name) {
    return {.meta = {},
            .root = {.name = name},
            .cipher = KdbxCipher::aes256,
            .kdf = KdfSettings::recommended(),
            .compressed = true,
            .formatVersion = {.major = 4, .minor = 1}};
}

/// Records a step of this name, before which the vault had that name.
void record(UndoHistory& history, const std::string& label, const std::string& vault,
            EntrySort::Column column = byTitle) {
    UndoHistory::Recording recording(history, {vaultNamed(vault), label, column});
    recording.keep();
}

std::string nameOf(const std::optional<UndoHistory::Snapshot>& snapshot) {
    return snapshot && snapshot->database ? snapshot->database->root.name : "none";
}

TEST(UndoHistoryTest, startsWithoutSteps) {
    UndoHistory history;
    EXPECT_FALSE(history.canUndo());
    EXPECT_FALSE(history.canRedo());
    EXPECT_EQ(history.undoLabel(), std::nullopt);
    EXPECT_EQ(history.redoLabel(), std::nullopt);
    EXPECT_FALSE(history.travel(Direction::undo, vaultNamed("now"), byTitle).has_value());
}

TEST(UndoHistoryTest, givesBackTheVaultBeforeTheLastStep) {
    UndoHistory history;
    record(history, "one", "a");
    record(history, "two", "b");
    EXPECT_EQ(history.undoLabel(), "two");
    EXPECT_EQ(nameOf(history.travel(Direction::undo, vaultNamed("c"), byTitle)), "b");
    EXPECT_EQ(nameOf(history.travel(Direction::undo, vaultNamed("b"), byTitle)), "a");
    EXPECT_FALSE(history.canUndo());
}

TEST(UndoHistoryTest, keepsTheNameOfAStepAndThePresentVaultForTheWayBack) {
    UndoHistory history;
    record(history, "one", "a");
    const auto undone = history.travel(Direction::undo, vaultNamed("b"), byTitle);
    ASSERT_TRUE(undone.has_value());
    EXPECT_EQ(undone->label, "one");
    EXPECT_EQ(history.redoLabel(), "one");
    EXPECT_EQ(nameOf(history.travel(Direction::redo, vaultNamed("a"), byTitle)), "b");
    EXPECT_EQ(history.undoLabel(), "one");
    EXPECT_EQ(history.redoLabel(), std::nullopt);
}

TEST(UndoHistoryTest, keepsTheSortColumnOfEitherSide) {
    UndoHistory history;
    record(history, "one", "a", byTitle);
    EXPECT_EQ(history.travel(Direction::undo, vaultNamed("b"), manual)->sortColumn, byTitle);
    EXPECT_EQ(history.travel(Direction::redo, vaultNamed("a"), byTitle)->sortColumn, manual);
}

TEST(UndoHistoryTest, losesAStepThatIsAskedForWithoutAVault) {
    UndoHistory history;
    record(history, "one", "a");
    record(history, "two", "b");
    EXPECT_FALSE(history.travel(Direction::undo, std::nullopt, byTitle).has_value());
    EXPECT_EQ(history.undoLabel(), "one");
    EXPECT_FALSE(history.canRedo());
}

TEST(UndoHistoryTest, keepsFiftyStepsAndDropsTheOldest) {
    UndoHistory history;
    for (int step = 1; step <= 51; ++step)
        record(history, std::to_string(step), "before " + std::to_string(step));
    std::string last;
    int steps = 0;
    for (; history.canUndo(); ++steps)
        last = nameOf(history.travel(Direction::undo, vaultNamed("later"), byTitle));
    EXPECT_EQ(steps, 50);
    EXPECT_EQ(last, "before 2");
}

TEST(UndoHistoryTest, hasNothingToRedoOnceAnotherStepBegins) {
    UndoHistory history;
    record(history, "one", "a");
    static_cast<void>(history.travel(Direction::undo, vaultNamed("b"), byTitle));
    UndoHistory::Recording recording(history, {vaultNamed("a"), "two", byTitle});
    EXPECT_FALSE(history.canRedo());
    EXPECT_EQ(history.undoLabel(), "two");
    recording.keep();
    EXPECT_FALSE(history.canRedo());
}

TEST(UndoHistoryTest, isAsItWasWhereAStepIsNotKept) {
    UndoHistory history;
    record(history, "one", "a");
    record(history, "two", "b");
    static_cast<void>(history.travel(Direction::undo, vaultNamed("c"), byTitle));
    { const UndoHistory::Recording recording(history, {vaultNamed("b"), "three", byTitle}); }
    EXPECT_EQ(history.undoLabel(), "one");
    EXPECT_EQ(history.redoLabel(), "two");
    EXPECT_EQ(nameOf(history.travel(Direction::redo, vaultNamed("b"), byTitle)), "c");
}

TEST(UndoHistoryTest, dropsTheOldestStepOnlyForOneThatIsKept) {
    UndoHistory history;
    for (int step = 1; step <= 50; ++step)
        record(history, std::to_string(step), "before " + std::to_string(step));
    { const UndoHistory::Recording recording(history, {vaultNamed("x"), "not kept", byTitle}); }
    std::string last;
    while (history.canUndo())
        last = nameOf(history.travel(Direction::undo, vaultNamed("later"), byTitle));
    EXPECT_EQ(last, "before 1");
}

TEST(UndoHistoryTest, keepsTheNamesOfStepsWhoseVaultsAreDropped) {
    UndoHistory history;
    record(history, "one", "a");
    record(history, "two", "b");
    static_cast<void>(history.travel(Direction::undo, vaultNamed("c"), byTitle));
    history.dropVaults();
    EXPECT_EQ(history.undoLabel(), "one");
    EXPECT_EQ(history.redoLabel(), "two");

    const auto undone = history.travel(Direction::undo, vaultNamed("another"), byTitle);
    ASSERT_TRUE(undone.has_value());
    EXPECT_FALSE(undone->database.has_value());
    EXPECT_EQ(history.redoLabel(), "one");
    EXPECT_FALSE(history.travel(Direction::redo, vaultNamed("another"), byTitle)->database.has_value());
}

TEST(UndoHistoryTest, forgetsAllStepsAtOnce) {
    UndoHistory history;
    record(history, "one", "a");
    record(history, "two", "b");
    static_cast<void>(history.travel(Direction::undo, vaultNamed("c"), byTitle));
    history.clear();
    EXPECT_FALSE(history.canUndo());
    EXPECT_FALSE(history.canRedo());
}

}  // namespace
