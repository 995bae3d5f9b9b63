// SPDX-License-Identifier: MIT
#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

namespace {

using namespace std::chrono_literals;
using ::testing::Optional;
using ::testing::StrEq;

using AppStateSavingTest = StateTest;

TEST_F(AppStateSavingTest, anEditReachesTheFileWhenItIsSaved) {
    unlock();
    rename("Yeni ad");
    EXPECT_EQ(firstTitleIn(vaultFile), "Banka");

    state->save();

    EXPECT_EQ(firstTitleIn(vaultFile), "Yeni ad");
    EXPECT_FALSE(state->isDirty());
    EXPECT_THAT(state->statusMessage(), Optional(StrEq("Kaydedildi")));
    EXPECT_EQ(codec.lastKey->password, "parola");
}

TEST_F(AppStateSavingTest, aCleanVaultIsWrittenAllTheSame) {
    unlock();
    state->save();
    EXPECT_EQ(files.writes, 1);
}

TEST_F(AppStateSavingTest, anOlderErrorOutlivesASave) {
    unlock();
    state->setLastError("eski hata");
    state->save();
    EXPECT_THAT(state->lastError(), Optional(StrEq("eski hata")));
}

TEST_F(AppStateSavingTest, aVaultThatCannotBeEncodedStaysDirty) {
    unlock();
    rename("Yeni ad");
    codec.failure = std::make_exception_ptr(KdbxError::invalidCredentials());

    state->save();

    EXPECT_THAT(state->lastError(), Optional(StrEq("Ana parola veya anahtar dosyası hatalı.")));
    EXPECT_FALSE(state->statusMessage());
    EXPECT_TRUE(state->isDirty());
    EXPECT_EQ(files.writes, 0);
}

TEST_F(AppStateSavingTest, aFileThatCannotBeWrittenLeavesTheVaultDirty) {
    unlock();
    rename("Yeni ad");
    files.unwritable[vaultFile] = "“Ev.kdbx” kaydedilemedi: diskte yer kalmadı.";

    state->save();

    EXPECT_THAT(state->lastError(), Optional(StrEq("“Ev.kdbx” kaydedilemedi: diskte yer kalmadı.")));
    EXPECT_FALSE(state->statusMessage());
    EXPECT_TRUE(state->isDirty());
    EXPECT_EQ(firstTitleIn(vaultFile), "Banka");
}

TEST_F(AppStateSavingTest, savingWithoutAVaultStillSaysSo) {
    state->save();
    EXPECT_THAT(state->statusMessage(), Optional(StrEq("Kaydedildi")));
    EXPECT_EQ(files.writes, 0);
}

TEST_F(AppStateSavingTest, savingElsewhereGoesOnThere) {
    unlock();
    rename("Yeni ad");

    state->saveAs(otherFile);

    EXPECT_EQ(state->databaseURL(), otherFile);
    EXPECT_FALSE(state->isDirty());
    EXPECT_EQ(storedBookmark(), otherFile);
    EXPECT_THAT(state->statusMessage(), Optional(StrEq("Kaydedildi")));
    EXPECT_EQ(firstTitleIn(otherFile), "Yeni ad");
    EXPECT_EQ(firstTitleIn(vaultFile), "Banka");
    EXPECT_EQ(codec.lastKey->password, "parola");

    launch();
    state->restoreRecentDatabase();
    EXPECT_EQ(state->databaseURL(), otherFile);
}

TEST_F(AppStateSavingTest, afterAFailedSaveElsewhereTheOldFileIsStillTheVault) {
    unlock();
    rename("Yeni ad");
    files.unwritable[otherFile] = "yazılamadı";

    state->saveAs(otherFile);

    EXPECT_THAT(state->lastError(), Optional(StrEq("yazılamadı")));
    EXPECT_EQ(state->databaseURL(), vaultFile);
    EXPECT_TRUE(state->isDirty());
    EXPECT_EQ(storedBookmark(), vaultFile);
    EXPECT_FALSE(state->statusMessage());

    state->save();
    EXPECT_EQ(firstTitleIn(vaultFile), "Yeni ad");
}

TEST_F(AppStateSavingTest, aSaveElsewhereThatCannotBeEncodedChangesNothing) {
    unlock();
    rename("Yeni ad");
    codec.failure = std::make_exception_ptr(KdbxError::cryptoFailure("x"));

    state->saveAs(otherFile);

    EXPECT_THAT(state->lastError(), Optional(KdbxError::cryptoFailure("x").errorDescription()));
    EXPECT_EQ(state->databaseURL(), vaultFile);
    EXPECT_TRUE(state->isDirty());
}

TEST_F(AppStateSavingTest, savingElsewhereWhileLockedDoesNothing) {
    state->prepare(vaultFile);
    state->saveAs(otherFile);
    EXPECT_EQ(files.writes, 0);
    EXPECT_EQ(state->databaseURL(), vaultFile);
    EXPECT_FALSE(state->statusMessage());
}

TEST_F(AppStateSavingTest, aConfirmationGoesAfterTwoSeconds) {
    unlock();
    state->save();
    clock.advance(1999ms);
    EXPECT_TRUE(state->statusMessage());
    clock.advance(1ms);
    EXPECT_FALSE(state->statusMessage());
}

TEST_F(AppStateSavingTest, theFirstOfTwoTimersTakesTheSecondMessageToo) {
    unlock();
    state->save();
    clock.advance(1500ms);
    state->save();
    clock.advance(499ms);
    EXPECT_THAT(state->statusMessage(), Optional(StrEq("Kaydedildi")));
    clock.advance(1ms);
    EXPECT_FALSE(state->statusMessage());
}

TEST_F(AppStateSavingTest, aClearThatOutlivesTheStateDoesNothing) {
    unlock();
    state->save();
    state.reset();
    clock.advance(2s);
}

}  // namespace
