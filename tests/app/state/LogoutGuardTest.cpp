// SPDX-License-Identifier: MIT
#include "app/state/LogoutGuard.h"

#include "tests/app/state/StateFakes.h"
#include "tests/support/FakeSession.h"

#include <gmock/gmock.h>

namespace {

using ::testing::Optional;
using ::testing::StrEq;

class LogoutGuardTest : public StateTest {
protected:
    FakeSessionInhibitor inhibitor;
    LogoutGuard guard{inhibitor, *state};
};

TEST_F(LogoutGuardTest, warnsWhileAVaultHasUnsavedChanges) {
    unlock();
    EXPECT_FALSE(inhibitor.reason);
    rename("Değişmiş");
    rename("Yine değişmiş");
    EXPECT_THAT(inhibitor.reason, Optional(StrEq("Kaydedilmemiş değişiklikler var")));
    EXPECT_EQ(inhibitor.asked, 1);

    state->save();
    EXPECT_FALSE(inhibitor.reason);
    rename("Yeniden");
    EXPECT_TRUE(inhibitor.reason);
    EXPECT_EQ(inhibitor.asked, 2);
}

TEST_F(LogoutGuardTest, aLockThatSavesEndsTheWarning) {
    unlock();
    rename("Değişmiş");
    state->lock();
    EXPECT_FALSE(inhibitor.reason);
}

TEST_F(LogoutGuardTest, aLockThatCannotSaveEndsTheWarningToo) {
    unlock();
    rename("Değişmiş");
    files.unwritable[vaultFile] = "Disk dolu.";
    state->lock();
    EXPECT_FALSE(inhibitor.reason);
}

TEST_F(LogoutGuardTest, aSaveThatFailsLeavesTheWarning) {
    unlock();
    rename("Değişmiş");
    files.unwritable[vaultFile] = "Disk dolu.";
    state->save();
    EXPECT_TRUE(inhibitor.reason);
}

TEST_F(LogoutGuardTest, anotherVaultChosenEndsTheWarning) {
    unlock();
    rename("Değişmiş");
    state->prepare(otherFile);
    EXPECT_FALSE(inhibitor.reason);
}

}  // namespace
