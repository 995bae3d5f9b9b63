// SPDX-License-Identifier: MIT
#include "tests/app/state/StateFakes.h"

namespace {

class AppStateGroupsTest : public StateTest {
protected:
    AppStateGroupsTest() { unlock(); }
    const KdbxGroup& group() const { return state->root()->groups[0]; }
};

TEST_F(AppStateGroupsTest, closingAGroupIsNoStepAndNothingToSave) {
    const auto modified = group().modified;
    int changes = 0;
    QObject::connect(&*state, &AppState::databaseChanged, &*state, [&] { ++changes; });

    state->setGroupExpanded(group().id, false);

    EXPECT_FALSE(group().isExpanded);
    EXPECT_EQ(group().modified, modified);
    EXPECT_FALSE(state->isDirty());
    EXPECT_FALSE(state->canUndo());
    EXPECT_EQ(changes, 1);
}

TEST_F(AppStateGroupsTest, aClosedGroupIsWrittenWithTheNextSave) {
    state->setGroupExpanded(group().id, false);
    state->save();
    EXPECT_FALSE(codec.databaseIn(files.contents.at(vaultFile)).root.groups[0].isExpanded);
}

TEST_F(AppStateGroupsTest, anUnknownGroupOrALockedVaultChangesNothing) {
    const auto id = group().id;
    state->setGroupExpanded(UUID::random(), false);
    EXPECT_TRUE(group().isExpanded);
    state->lock();
    state->setGroupExpanded(id, false);
    EXPECT_FALSE(state->database());
}

}  // namespace
