// SPDX-License-Identifier: MIT
#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

namespace {

using namespace std::chrono_literals;
using ::testing::Optional;

constexpr auto none = std::nullopt;

/// A session of "/kasa/Ev.kdbx" whose first entry is renamed and not saved.
class AppStateRescueTest : public StateTest {
protected:
    void changeUnsaved(const std::string& title = "Değişmiş") {
        unlock();
        rename(title);
    }
    void unlockAgain() {
        state->unlock("parola", none);
        ASSERT_FALSE(state->isLocked()) << state->lastError().value_or("");
    }
    /// What a session that was killed leaves behind: the next start finds no copy held.
    void kill() {
        clock.forgetAll();
        rescues.held.clear();
        launch();
        state->prepare(vaultFile);
    }
    std::string titleInCopy(std::size_t number = 0) const {
        return codec.databaseIn(std::next(rescues.contents.begin(), static_cast<std::ptrdiff_t>(number))->second)
            .root.entries[0]
            .title;
    }
};

TEST_F(AppStateRescueTest, quittingKeepsWhatIsUnsavedAndLeavesTheVaultAlone) {
    changeUnsaved();

    state->keepUnsaved();

    ASSERT_EQ(rescues.contents.size(), 1U);
    EXPECT_EQ(titleInCopy(), "Değişmiş");
    EXPECT_EQ(firstTitleIn(vaultFile), "Banka");
    EXPECT_TRUE(state->isDirty());
}

TEST_F(AppStateRescueTest, aSessionWithoutUnsavedChangesKeepsNothing) {
    unlock();
    clock.advance(10min);
    state->keepUnsaved();
    state->lock();
    state->closeDatabase();

    EXPECT_TRUE(rescues.contents.empty());
    EXPECT_EQ(rescues.writes, 0);
}

TEST_F(AppStateRescueTest, anotherVaultOpenedKeepsWhatIsUnsaved) {
    changeUnsaved();

    state->prepare(otherFile);

    ASSERT_EQ(rescues.contents.size(), 1U);
    EXPECT_EQ(titleInCopy(), "Değişmiş");
    EXPECT_TRUE(rescues.contents.begin()->first.starts_with(vaultFile.native())) << "under the vault that was open";
    EXPECT_TRUE(rescues.held.empty()) << "it is for the next session";
}

TEST_F(AppStateRescueTest, aNewVaultOverAnOpenOneKeepsWhatIsUnsaved) {
    changeUnsaved();

    state->createDatabase(otherFile, "yeni", none);

    ASSERT_EQ(rescues.contents.size(), 1U);
    EXPECT_EQ(titleInCopy(), "Değişmiş");
    EXPECT_TRUE(rescues.contents.begin()->first.starts_with(vaultFile.native()));
}

TEST_F(AppStateRescueTest, aNewVaultThatFailsLeavesTheSessionAsItWas) {
    changeUnsaved();
    files.unwritable[otherFile] = "yer yok";

    state->createDatabase(otherFile, "yeni", none);
    state->save();

    EXPECT_EQ(firstTitleIn(vaultFile), "Değişmiş");
    EXPECT_TRUE(rescues.contents.empty());
}

TEST_F(AppStateRescueTest, aLockThatCannotSaveKeepsWhatIsUnsaved) {
    changeUnsaved();
    files.unwritable[vaultFile] = "salt okunur";

    state->lock();

    EXPECT_TRUE(state->isLocked());
    ASSERT_EQ(rescues.contents.size(), 1U);
    EXPECT_EQ(titleInCopy(), "Değişmiş");
    EXPECT_EQ(state->lastError(), none);
}

TEST_F(AppStateRescueTest, closingThatCannotSaveKeepsWhatIsUnsaved) {
    changeUnsaved();
    files.unwritable[vaultFile] = "salt okunur";

    state->closeDatabase();

    EXPECT_EQ(rescues.contents.size(), 1U);
}

TEST_F(AppStateRescueTest, aLockThatSavesKeepsNothing) {
    changeUnsaved();
    clock.advance(1min);
    ASSERT_EQ(rescues.contents.size(), 1U);

    state->lock();

    EXPECT_EQ(firstTitleIn(vaultFile), "Değişmiş");
    EXPECT_TRUE(rescues.contents.empty());
}

TEST_F(AppStateRescueTest, aLockWithNowhereToKeepStillLocks) {
    changeUnsaved();
    files.unwritable[vaultFile] = "salt okunur";
    rescues.failure = "yer yok";

    state->lock();

    EXPECT_TRUE(state->isLocked());
    EXPECT_TRUE(rescues.contents.empty());
}

TEST_F(AppStateRescueTest, aCrashCostsAMinuteAtMost) {
    changeUnsaved();
    clock.advance(1min);
    rename("Sonra");
    clock.advance(1min);
    kill();

    unlockAgain();

    ASSERT_TRUE(state->rescueOffer());
    state->restoreRescue();
    EXPECT_EQ(firstTitle(), "Sonra");
}

TEST_F(AppStateRescueTest, isWrittenAtMostOnceAMinute) {
    unlock();
    for (int second = 0; second < 600; ++second) {
        rename("Başlık " + std::to_string(second));
        clock.advance(1s);
    }

    EXPECT_GE(rescues.writes, 9);
    EXPECT_LE(rescues.writes, 11);
    EXPECT_EQ(rescues.contents.size(), 1U) << "one copy, over and over";
}

TEST_F(AppStateRescueTest, whatIsKeptAlreadyIsNotWrittenAgain) {
    changeUnsaved();
    clock.advance(10min);
    EXPECT_EQ(rescues.writes, 1);

    state->keepUnsaved();

    EXPECT_EQ(rescues.writes, 1);
}

TEST_F(AppStateRescueTest, aWriteThatFailedIsTriedAgainAtTheEnd) {
    changeUnsaved();
    rescues.failure = "yer yok";
    clock.advance(1min);
    ASSERT_TRUE(rescues.contents.empty());
    rescues.failure = none;

    state->keepUnsaved();

    EXPECT_EQ(rescues.contents.size(), 1U);
}

TEST_F(AppStateRescueTest, aWriteUnderWayIsWaitedFor) {
    rescueWork.waits = true;
    changeUnsaved("Eski");
    clock.advance(1min);
    rename("Yeni");
    EXPECT_EQ(rescues.writes, 0);

    state->prepare(otherFile);

    EXPECT_EQ(rescues.contents.size(), 1U);
    EXPECT_EQ(titleInCopy(), "Yeni");
}

TEST_F(AppStateRescueTest, aSaveRemovesTheCopyAlsoWhileItIsBeingWritten) {
    rescueWork.waits = true;
    changeUnsaved();
    clock.advance(1min);

    state->save();
    rescueWork.finish();

    EXPECT_TRUE(rescues.contents.empty());
}

TEST_F(AppStateRescueTest, savingElsewhereRemovesTheCopy) {
    changeUnsaved();
    clock.advance(1min);
    ASSERT_EQ(rescues.contents.size(), 1U);

    state->saveAs(otherFile);

    EXPECT_TRUE(rescues.contents.empty());
    rename("Sonra");
    state->keepUnsaved();
    ASSERT_EQ(rescues.contents.size(), 1U);
    EXPECT_TRUE(rescues.contents.begin()->first.starts_with(otherFile.native())) << "the session goes on there";
}

TEST_F(AppStateRescueTest, aSaveThatFailsLeavesTheCopy) {
    changeUnsaved();
    clock.advance(1min);
    files.unwritable[vaultFile] = "salt okunur";

    state->save();

    EXPECT_EQ(rescues.contents.size(), 1U);
}

TEST_F(AppStateRescueTest, whatWasLeftIsOfferedOnceTheVaultIsOpen) {
    changeUnsaved();
    clock.advance(1min);
    const auto kept = rescues.times.begin()->second;
    clock.advance(10h);
    kill();
    EXPECT_FALSE(state->rescueOffer()) << "nothing is offered while locked";

    unlockAgain();

    EXPECT_EQ(state->rescueOffer(), (RescueOffer{.kept = kept}));
    EXPECT_EQ(firstTitle(), "Banka");
    EXPECT_FALSE(state->isDirty());
}

TEST_F(AppStateRescueTest, bringingItBackIsOneUndoableStep) {
    changeUnsaved();
    state->edit("Ad", [](KdbxDatabase& database) { database.meta.databaseDescription = "yeni açıklama"; });
    state->prepare(vaultFile);
    unlockAgain();

    state->restoreRescue();

    EXPECT_EQ(firstTitle(), "Değişmiş");
    EXPECT_EQ(state->database()->meta.databaseDescription, "yeni açıklama");
    EXPECT_TRUE(state->isDirty());
    EXPECT_FALSE(state->rescueOffer());
    EXPECT_EQ(state->undoLabel(), "Saklananı Geri Getir");
    EXPECT_EQ(state->statusMessage(), "Saklanan değişiklikler geri getirildi");
    EXPECT_EQ(firstTitleIn(vaultFile), "Banka");
    state->undo();
    EXPECT_EQ(firstTitle(), "Banka");
    EXPECT_FALSE(state->canUndo());
}

TEST_F(AppStateRescueTest, bringingItBackKeepsTheVaultsOwnSettings) {
    changeUnsaved();
    state->prepare(vaultFile);
    auto vault = smallVault();
    vault.cipher = KdbxCipher::chacha20;
    vault.formatVersion = {.major = 3, .minor = 1};
    putVault(vault);
    unlockAgain();

    state->restoreRescue();

    EXPECT_EQ(firstTitle(), "Değişmiş");
    EXPECT_EQ(state->database()->cipher, KdbxCipher::chacha20);
    EXPECT_EQ(state->database()->formatVersion.major, 3);
}

TEST_F(AppStateRescueTest, aSelectionThatIsGoneIsGivenUp) {
    unlock();
    state->deleteEntries({mail().id});
    state->prepare(vaultFile);
    unlockAgain();
    state->setSelectedEntryIDs({mail().id});

    state->restoreRescue();

    EXPECT_TRUE(state->selectedEntryIDs().empty());
}

TEST_F(AppStateRescueTest, whatIsUndoneIsOfferedAgain) {
    changeUnsaved();
    state->prepare(vaultFile);
    unlockAgain();
    state->restoreRescue();

    state->undo();
    EXPECT_TRUE(state->rescueOffer());
    state->redo();
    EXPECT_FALSE(state->rescueOffer());
    EXPECT_EQ(firstTitle(), "Değişmiş");
    state->undo();
    state->save();

    EXPECT_TRUE(state->rescueOffer()) << "what was saved is not what was left";
    EXPECT_EQ(rescues.contents.size(), 1U);
}

TEST_F(AppStateRescueTest, whatWasBroughtBackStaysOnDiskUntilItIsSaved) {
    changeUnsaved();
    state->prepare(vaultFile);
    unlockAgain();
    state->restoreRescue();
    ASSERT_FALSE(rescues.contents.empty());
    kill();
    unlockAgain();
    ASSERT_TRUE(state->rescueOffer());
    state->restoreRescue();

    state->save();

    EXPECT_TRUE(rescues.contents.empty());
    EXPECT_EQ(firstTitleIn(vaultFile), "Değişmiş");
}

TEST_F(AppStateRescueTest, deletingItIsForGood) {
    changeUnsaved();
    state->prepare(vaultFile);
    unlockAgain();

    state->deleteRescue();

    EXPECT_FALSE(state->rescueOffer());
    EXPECT_TRUE(rescues.contents.empty());
    EXPECT_EQ(firstTitle(), "Banka");
    EXPECT_FALSE(state->isDirty());
    EXPECT_EQ(state->statusMessage(), "Saklanan değişiklikler silindi");
}

TEST_F(AppStateRescueTest, whatIsNotDecidedOnOutlivesASessionASaveAndALock) {
    changeUnsaved();
    state->prepare(vaultFile);
    unlockAgain();
    rename("Başka");
    clock.advance(1min);
    state->save();
    rename("Daha başka");
    state->lock();
    unlockAgain();

    ASSERT_TRUE(state->rescueOffer());
    state->restoreRescue();
    EXPECT_EQ(firstTitle(), "Değişmiş");
}

TEST_F(AppStateRescueTest, ofTwoThatWereLeftNoneIsLostAndTheNewerComesFirst) {
    changeUnsaved("Önceki");
    state->keepUnsaved();
    clock.advance(1h);
    kill();
    unlockAgain();
    rename("Sonraki");
    state->prepare(vaultFile);
    unlockAgain();
    EXPECT_EQ(rescues.contents.size(), 2U);

    state->restoreRescue();
    EXPECT_EQ(firstTitle(), "Sonraki");
    ASSERT_TRUE(state->rescueOffer());
    state->restoreRescue();
    EXPECT_EQ(firstTitle(), "Önceki");
    EXPECT_FALSE(state->rescueOffer());
}

TEST_F(AppStateRescueTest, aCopyUnderAnotherPasswordSaysSoAndStaysUntilItIsDeleted) {
    changeUnsaved();
    state->prepare(vaultFile);
    files.contents[vaultFile] = codec.save(smallVault(), KdbxKey("yeni parola", none));
    state->unlock("yeni parola", none);
    ASSERT_TRUE(state->rescueOffer());

    state->restoreRescue();

    ASSERT_TRUE(state->rescueOffer());
    EXPECT_EQ(state->rescueOffer()->failure, "Kasanın ana parolası ya da anahtar dosyası o günden beri değişmiş.");
    EXPECT_EQ(firstTitle(), "Banka");
    EXPECT_FALSE(state->isDirty());
    EXPECT_FALSE(state->canUndo());
    EXPECT_EQ(rescues.contents.size(), 1U);
    state->deleteRescue();
    EXPECT_TRUE(rescues.contents.empty());
}

TEST_F(AppStateRescueTest, aDamagedCopySaysSo) {
    changeUnsaved();
    state->prepare(vaultFile);
    rescues.contents.begin()->second = copyOf(bytesOf("bozuk"));
    unlockAgain();

    state->restoreRescue();

    EXPECT_EQ(state->rescueOffer()->failure, KdbxError::notAKdbxFile().errorDescription());
    EXPECT_EQ(state->lastError(), none);
    EXPECT_FALSE(state->isDirty());
}

TEST_F(AppStateRescueTest, aCopyFromBeforeASaveElsewhereIsDerivedAnew) {
    changeUnsaved();
    state->keepUnsaved();
    kill();
    putVault(smallVault());  // another program saved it, with a salt of its own
    unlockAgain();

    state->restoreRescue();

    EXPECT_EQ(firstTitle(), "Değişmiş");
}

TEST_F(AppStateRescueTest, aFormThatALockDropsIsKept) {
    unlock();
    state->setRoute(AppState::Route::editEntry(bank().id));
    state->setFormContent([](KdbxDatabase& database) {
        database.root.entries.mutableAt(0).title = "Yazılıyordu";
        return true;
    });

    state->lock();
    EXPECT_EQ(firstTitleIn(vaultFile), "Banka");
    unlockAgain();
    state->restoreRescue();

    EXPECT_EQ(firstTitle(), "Yazılıyordu");
}

TEST_F(AppStateRescueTest, aFormComesOnTopOfWhatTheLockSaved) {
    changeUnsaved("Kaydedilen");
    clock.advance(1min);
    state->setRoute(AppState::Route::newEntry(root().id));
    state->setFormContent([](KdbxDatabase& database) {
        database.root.entries.append(entryTitled("Yazılıyordu"));
        return true;
    });

    state->lock();
    EXPECT_EQ(firstTitleIn(vaultFile), "Kaydedilen");
    unlockAgain();
    state->restoreRescue();

    EXPECT_EQ(titlesOf(root().entries), (std::vector<std::string>{"Kaydedilen", "Posta", "Yazılıyordu"}));
}

TEST_F(AppStateRescueTest, aFormThatWouldGoTooDeepIsNoReasonToLoseTheRest) {
    changeUnsaved();
    state->setRoute(AppState::Route::newEntry(root().id));
    state->setFormContent([](KdbxDatabase& database) -> bool {
        database.root.entries.mutableAt(0).title = "Yarım";
        throw KdbxError::nestedTooDeep();
    });

    state->prepare(otherFile);

    EXPECT_EQ(titleInCopy(), "Değişmiş");
}

TEST_F(AppStateRescueTest, aFormWithoutAChangeKeepsNothing) {
    unlock();
    state->setRoute(AppState::Route::editEntry(bank().id));
    state->setFormContent([](KdbxDatabase&) { return false; });

    state->lock();

    EXPECT_TRUE(rescues.contents.empty());
}

TEST_F(AppStateRescueTest, aFormThatIsClosedIsNotKept) {
    unlock();
    state->setRoute(AppState::Route::editEntry(bank().id));
    state->setFormContent([](KdbxDatabase&) { return true; });
    state->setRoute(none);

    state->lock();

    EXPECT_TRUE(rescues.contents.empty());
}

TEST_F(AppStateRescueTest, aFormIsKeptAlsoWhereTheVaultIsKeptAlready) {
    changeUnsaved();
    clock.advance(1min);
    state->setRoute(AppState::Route::editEntry(bank().id));
    state->setFormContent([](KdbxDatabase& database) {
        database.root.entries.mutableAt(0).title = "Yazılıyordu";
        return true;
    });

    state->prepare(otherFile);

    EXPECT_EQ(titleInCopy(), "Yazılıyordu");
    EXPECT_EQ(rescues.contents.size(), 1U);
}

TEST_F(AppStateRescueTest, withoutAStoreASessionGoesOnAsEver) {
    auto withoutStore = services(autoTyping);
    withoutStore.rescues = nullptr;
    withoutStore.rescueWork = nullptr;
    state.emplace(withoutStore);
    changeUnsaved();
    state->restoreRescue();
    state->deleteRescue();
    state->keepUnsaved();
    state->save();
    state->lock();

    EXPECT_EQ(firstTitleIn(vaultFile), "Değişmiş");
    EXPECT_FALSE(state->rescueOffer());
}

}  // namespace
