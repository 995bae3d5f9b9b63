// SPDX-License-Identifier: MIT
#include "core/primitives/AESCipher.h"
#include "core/primitives/Argon2.h"
#include "core/primitives/Gzip.h"
#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

#include <new>

namespace {

using ::testing::ElementsAre;
using ::testing::Optional;
using ::testing::StrEq;

using AppStateSessionTest = StateTest;

constexpr auto none = std::nullopt;

TEST_F(AppStateSessionTest, startsWithoutAVaultAndLocked) {
    EXPECT_FALSE(state->databaseURL());
    EXPECT_TRUE(state->isLocked());
    EXPECT_FALSE(state->isDirty());
    EXPECT_FALSE(state->database());
    EXPECT_FALSE(state->lastError());
    EXPECT_FALSE(state->statusMessage());
    EXPECT_FALSE(state->selectedGroupID());
    EXPECT_TRUE(state->selectedEntryIDs().empty());
    EXPECT_EQ(state->searchText(), "");
    EXPECT_EQ(state->sort(), (EntrySort{.column = EntrySort::Column::title, .ascending = true}));
    EXPECT_FALSE(state->route());
    EXPECT_EQ(state->searchFocusToken(), 0);
    EXPECT_FALSE(state->undoLabel());
    EXPECT_FALSE(state->redoLabel());
    EXPECT_EQ(state->root(), nullptr);
    EXPECT_EQ(state->selectedGroup(), nullptr);
    EXPECT_FALSE(state->canSave());
}

TEST_F(AppStateSessionTest, unlockingWithoutAFileAsksForOne) {
    state->unlock("parola", none);

    EXPECT_THAT(state->lastError(), Optional(StrEq("Önce bir veritabanı dosyası seçin.")));
    EXPECT_TRUE(state->isLocked());
    EXPECT_FALSE(codec.failure);
}

TEST_F(AppStateSessionTest, aVaultOpensWithItsPassword) {
    state->prepare(vaultFile);
    state->setSearchText("eski arama");
    state->setSelectedEntryIDs({UUID::random()});
    state->setLastError("eski hata");

    state->unlock("parola", none);

    ASSERT_TRUE(state->database());
    EXPECT_EQ(firstTitle(), "Banka");
    EXPECT_FALSE(state->isLocked());
    EXPECT_FALSE(state->isDirty());
    EXPECT_FALSE(state->lastError());
    EXPECT_FALSE(state->statusMessage());
    EXPECT_EQ(state->selectedGroupID(), state->root()->id);
    EXPECT_TRUE(state->selectedEntryIDs().empty());
    EXPECT_EQ(state->searchText(), "");
    EXPECT_TRUE(state->canSave());
}

TEST_F(AppStateSessionTest, anEmptyPasswordWithoutAKeyFileIsForTheVaultCodeToRefuse) {
    state->prepare(vaultFile);

    state->unlock("", none);

    ASSERT_TRUE(codec.lastKey);
    EXPECT_FALSE(codec.lastKey->password);
    EXPECT_FALSE(codec.lastKey->keyFileData);
    EXPECT_THAT(state->lastError(), Optional(StrEq("Ana parola veya anahtar dosyası hatalı.")));
}

TEST_F(AppStateSessionTest, aKeyFileIsReadWholeAndGivenAsItIs) {
    files.contents["/kasa/anahtar"] = copyOf(bytesOf("anahtar baytları"));
    state->prepare(vaultFile);

    state->unlock("parola", "/kasa/anahtar");

    ASSERT_TRUE(codec.lastKey);
    EXPECT_EQ(codec.lastKey->password, "parola");
    EXPECT_EQ(codec.lastKey->keyFileData, copyOf(bytesOf("anahtar baytları")));
}

TEST_F(AppStateSessionTest, anUnreadableKeyFileKeepsTheVaultLocked) {
    files.unreadable["/kasa/anahtar"] = "“anahtar” okunamadı.";
    state->prepare(vaultFile);

    state->unlock("parola", "/kasa/anahtar");

    EXPECT_THAT(state->lastError(), Optional(StrEq("“anahtar” okunamadı.")));
    EXPECT_TRUE(state->isLocked());
    EXPECT_FALSE(state->database());
}

TEST_F(AppStateSessionTest, anUnreadableVaultStaysLocked) {
    files.unreadable[vaultFile] = "“Ev.kdbx” okunamadı.";
    state->prepare(vaultFile);

    state->unlock("parola", none);

    EXPECT_THAT(state->lastError(), Optional(StrEq("“Ev.kdbx” okunamadı.")));
    EXPECT_TRUE(state->isLocked());
}

TEST_F(AppStateSessionTest, aWrongPasswordKeepsTheChosenFile) {
    state->prepare(vaultFile);

    state->unlock("yanlış", none);

    EXPECT_THAT(state->lastError(), Optional(StrEq("Ana parola veya anahtar dosyası hatalı.")));
    EXPECT_EQ(state->databaseURL(), vaultFile);
    EXPECT_EQ(state->databaseName(), "Ev");
    EXPECT_TRUE(state->isLocked());
}

TEST_F(AppStateSessionTest, aFailedUnlockOfAnOpenVaultLeavesItOpen) {
    unlock();
    rename("Yeni ad");

    state->unlock("yanlış", none);

    EXPECT_FALSE(state->isLocked());
    EXPECT_EQ(firstTitle(), "Yeni ad");
    EXPECT_TRUE(state->isDirty());
    EXPECT_TRUE(state->canUndo());
}

TEST_F(AppStateSessionTest, everyTypedFailureSpeaksForItself) {
    const std::pair<std::exception_ptr, std::string> failures[] = {
        {std::make_exception_ptr(KdbxError::notAKdbxFile()), KdbxError::notAKdbxFile().errorDescription()},
        {std::make_exception_ptr(AESCipher::Error::cryptoFailure(-4304)),
         AESCipher::Error::cryptoFailure(-4304).errorDescription()},
        {std::make_exception_ptr(Argon2::Error::allocationFailed()),
         Argon2::Error::allocationFailed().errorDescription()},
        {std::make_exception_ptr(Gzip::Error::truncated()), Gzip::Error::truncated().errorDescription()},
        {std::make_exception_ptr(FileError(EIO, "disk bozuk")), "disk bozuk"},
        {std::make_exception_ptr(std::bad_alloc()), "Bu işlem için yeterli bellek yok."},
        {std::make_exception_ptr(std::length_error("vector")), "Bu işlem için yeterli bellek yok."},
        {std::make_exception_ptr(std::runtime_error("beklenmeyen")), "beklenmeyen"},
        {std::make_exception_ptr(7), "Bilinmeyen bir hata oluştu."},
    };
    state->prepare(vaultFile);
    for (const auto& [failure, text] : failures) {
        codec.failure = failure;
        state->unlock("parola", none);
        EXPECT_THAT(state->lastError(), Optional(text));
        EXPECT_TRUE(state->isLocked());
    }
}

TEST_F(AppStateSessionTest, repeatedIdentifiersAreRepairedAndReported) {
    auto vault = smallVault();
    const auto repeated = vault.root.entries[0].id;
    vault.root.entries.mutableAt(1).id = repeated;
    vault.root.groups.mutableAt(0).entries.mutableAt(0).id = repeated;
    putVault(vault);

    unlock();

    EXPECT_THAT(state->statusMessage(), Optional(StrEq("2 kaydın kimliği yinelenmişti, onarıldı.")));
    EXPECT_FALSE(state->isDirty());
    std::set<UUID> ids;
    for (const auto& entry : state->root()->allEntries())
        ids.insert(entry.id);
    EXPECT_EQ(ids.size(), 3);
    EXPECT_TRUE(ids.contains(repeated));
    clock.advance(std::chrono::seconds(2));
    EXPECT_FALSE(state->statusMessage());
}

TEST_F(AppStateSessionTest, repairingAloneLeavesTheFileAsItWas) {
    auto vault = smallVault();
    vault.root.entries.mutableAt(1).id = vault.root.entries[0].id;
    putVault(vault);
    unlock();

    state->lock();

    EXPECT_EQ(files.writes, 0);
}

TEST_F(AppStateSessionTest, preparingDropsAnOpenSessionWithoutSavingIt) {
    unlock();
    rename("Kaydedilmemiş");
    state->setSearchText("arama");
    state->setSelectedEntryIDs({state->root()->entries[0].id});
    state->setRoute(AppState::Route::generator(none));
    state->setLastError("eski hata");

    state->prepare(otherFile);

    EXPECT_EQ(state->databaseURL(), otherFile);
    EXPECT_FALSE(state->database());
    EXPECT_TRUE(state->isLocked());
    EXPECT_FALSE(state->lastError());
    EXPECT_FALSE(state->selectedGroupID());
    EXPECT_TRUE(state->selectedEntryIDs().empty());
    EXPECT_FALSE(state->route());
    EXPECT_EQ(storedBookmark(), otherFile);
    EXPECT_EQ(files.writes, 0);
    EXPECT_TRUE(state->isDirty()) << "left for the next unlock";
    EXPECT_EQ(state->searchText(), "arama");
    EXPECT_TRUE(state->canUndo());
}

TEST_F(AppStateSessionTest, theNextUnlockClearsWhatPreparingLeft) {
    unlock();
    rename("Kaydedilmemiş");
    state->setSearchText("arama");
    state->prepare(vaultFile);

    state->unlock("parola", none);

    EXPECT_FALSE(state->isDirty());
    EXPECT_FALSE(state->canUndo());
    EXPECT_FALSE(state->undoLabel());
    EXPECT_EQ(state->searchText(), "");
}

TEST_F(AppStateSessionTest, theNameIsTheVaultsElseTheFilesElseThePrograms) {
    EXPECT_EQ(state->databaseName(), "Brenvik");
    state->prepare(vaultFile);
    EXPECT_EQ(state->databaseName(), "Ev");
    state->unlock("parola", none);
    EXPECT_EQ(state->databaseName(), "Kasam");
    state->lock();
    EXPECT_EQ(state->databaseName(), "Ev");
}

TEST_F(AppStateSessionTest, aNameOfSpacesAndTabsAloneIsNone) {
    putVault(smallVault(" \t "));
    unlock();
    EXPECT_EQ(state->databaseName(), "Ev");
}

TEST_F(AppStateSessionTest, aNameIsShownUntrimmed) {
    putVault(smallVault("  Kasam "));
    unlock();
    EXPECT_EQ(state->databaseName(), "  Kasam ");
}

TEST_F(AppStateSessionTest, aFileNameThatIsNoTextIsShownAsOne) {
    state->prepare("/kasa/\xFF.kdbx");
    EXPECT_EQ(state->databaseName(), "\uFFFD");
}

TEST_F(AppStateSessionTest, anUnlockedSessionAlwaysHasASelectedGroup) {
    unlock();
    const auto social = state->root()->groups[0].id;

    state->setSelectedGroupID(social);
    EXPECT_EQ(state->selectedGroup()->id, social);
    state->setSelectedGroupID(UUID::random());
    EXPECT_EQ(state->selectedGroup(), state->root());
    state->setSelectedGroupID(none);
    EXPECT_EQ(state->selectedGroup(), state->root());
}

TEST_F(AppStateSessionTest, viewsAreNotifiedWhenAllOfAStepIsDoneAndInItsOrder) {
    std::vector<std::string> told;
    const auto watch = [&](auto signal, const char* name) {
        QObject::connect(&*state, signal, &*state, [&told, name, this] {
            told.emplace_back(name);
            EXPECT_TRUE(state->isLocked() || state->selectedGroupID()) << name;
        });
    };
    state->prepare(vaultFile);
    state->setLastError("eski hata");
    watch(&AppState::databaseChanged, "database");
    watch(&AppState::isLockedChanged, "isLocked");
    watch(&AppState::isDirtyChanged, "isDirty");
    watch(&AppState::lastErrorChanged, "lastError");
    watch(&AppState::selectedGroupIDChanged, "selectedGroupID");

    state->unlock("parola", none);

    EXPECT_THAT(told, ElementsAre("database", "isLocked", "lastError", "selectedGroupID"));
}

TEST_F(AppStateSessionTest, twoFailuresWithOneTextAreOneChange) {
    int changes = 0;
    state->prepare(vaultFile);
    QObject::connect(&*state, &AppState::lastErrorChanged, &*state, [&] { ++changes; });

    state->unlock("yanlış", none);
    state->unlock("yine yanlış", none);

    EXPECT_EQ(changes, 1);
}

TEST_F(AppStateSessionTest, aVerbCalledInAnswerToASignalIsReportedToo) {
    bool wasToldOfStatus = false;
    QObject::connect(&*state, &AppState::databaseURLChanged, &*state, [&] { state->setStatusMessage("hazır"); });
    QObject::connect(&*state, &AppState::statusMessageChanged, &*state, [&] { wasToldOfStatus = true; });

    state->prepare(vaultFile);

    EXPECT_TRUE(wasToldOfStatus);
}

TEST(RouteTest, isIdentifiedByItsKindAndTarget) {
    const auto id = UUID::fromText("0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0").value();
    EXPECT_EQ(Route::newEntry(id).id(), "newEntry-0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0");
    EXPECT_EQ(Route::editEntry(id).id(), "editEntry-0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0");
    EXPECT_EQ(Route::newGroup(id).id(), "newGroup-0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0");
    EXPECT_EQ(Route::editGroup(id).id(), "editGroup-0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0");
    EXPECT_EQ(Route::generator(id).id(), "generator-0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0");
    EXPECT_EQ(Route::generator(none).id(), "generator--");
    EXPECT_EQ(Route::newEntry(id), Route::newEntry(id));
    EXPECT_NE(Route::newEntry(id), Route::editEntry(id));
    EXPECT_NE(Route::newEntry(id), Route::newEntry(UUID()));
}

}  // namespace
