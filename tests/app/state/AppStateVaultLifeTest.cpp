// SPDX-License-Identifier: MIT
#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

namespace {

using ::testing::Optional;
using ::testing::StrEq;

using AppStateVaultLifeTest = StateTest;

constexpr auto none = std::nullopt;

TEST_F(AppStateVaultLifeTest, aNewVaultIsWrittenAndOpen) {
    state->createDatabase(otherFile, "yeni parola", copyOf(bytesOf("anahtar")));

    ASSERT_TRUE(state->database());
    EXPECT_FALSE(state->isLocked());
    EXPECT_FALSE(state->isDirty());
    EXPECT_EQ(state->databaseURL(), otherFile);
    EXPECT_EQ(state->selectedGroupID(), state->root()->id);
    EXPECT_EQ(storedBookmark(), otherFile);
    EXPECT_TRUE(files.contents.contains(otherFile));
    EXPECT_EQ(codec.lastKey->password, "yeni parola");
    EXPECT_EQ(codec.lastKey->keyFileData, copyOf(bytesOf("anahtar")));

    state->lock();
    state->unlock("yeni parola", none);
    EXPECT_TRUE(state->isLocked()) << "the key file is part of the key";
}

TEST_F(AppStateVaultLifeTest, aNewVaultHasItsFieldsAndThreeGroups) {
    state->createDatabase(otherFile, "parola", none);

    ASSERT_TRUE(state->database());
    const auto& vault = *state->database();
    EXPECT_EQ(vault.meta.databaseName, "İş");
    EXPECT_EQ(vault.meta.databaseDescription, "");
    EXPECT_EQ(vault.meta.defaultUsername, "");
    EXPECT_TRUE(vault.meta.recycleBinEnabled);
    EXPECT_FALSE(vault.meta.recycleBinUUID);
    EXPECT_EQ(vault.meta.historyMaxItems, 10);
    EXPECT_EQ(vault.meta.historyMaxSize, 6291456);
    EXPECT_EQ(vault.meta.generator, "Brenvik");
    EXPECT_EQ(vault.cipher, KdbxCipher::aes256);
    EXPECT_EQ(
        vault.kdf,
        (KdfSettings{KdfSettings::Argon2{
            .variant = KdfSettings::Variant::argon2id, .memoryKiB = 262144, .iterations = 16, .parallelism = 4}}));
    EXPECT_TRUE(vault.compressed);
    EXPECT_EQ(vault.formatVersion, (KdbxFormatVersion{.major = 4, .minor = 1}));

    const auto check = [&](const KdbxGroup& group, const std::string& name) {
        EXPECT_EQ(group.name, name);
        EXPECT_EQ(group.notes, "");
        EXPECT_EQ(group.iconID, 48);
        EXPECT_TRUE(group.isExpanded);
        EXPECT_FALSE(group.defaultAutoTypeSequence);
        EXPECT_TRUE(group.entries.empty());
        EXPECT_TRUE(group.unknownXML.empty());
        EXPECT_FALSE(group.id.isZero());
        EXPECT_EQ(group.created, clock.now());
        EXPECT_EQ(group.modified, clock.now());
    };
    check(vault.root, "İş");
    ASSERT_EQ(vault.root.groups.size(), 3);
    check(vault.root.groups[0], "İnternet");
    check(vault.root.groups[1], "E-posta");
    check(vault.root.groups[2], "Bankacılık");
    for (const auto& group : vault.root.groups)
        EXPECT_TRUE(group.groups.empty());
}

TEST_F(AppStateVaultLifeTest, aNewVaultsNameIsTextWhateverTheFilesNameIs) {
    state->createDatabase("/kasa/\xFFkasa.kdbx", "parola", none);
    ASSERT_TRUE(state->database());
    EXPECT_EQ(state->database()->meta.databaseName, "\uFFFDkasa");
}

TEST_F(AppStateVaultLifeTest, anEmptyPasswordIsNone) {
    state->createDatabase(otherFile, "", none);
    ASSERT_TRUE(codec.lastKey);
    EXPECT_FALSE(codec.lastKey->password);
    EXPECT_FALSE(codec.lastKey->keyFileData);
}

TEST_F(AppStateVaultLifeTest, aVaultThatCannotBeMadeLeavesTheOpenOneAsItWas) {
    unlock();
    rename("Kaydedilmemiş");
    files.unwritable[otherFile] = "“İş.kdbx” kaydedilemedi.";

    state->createDatabase(otherFile, "parola", none);

    EXPECT_THAT(state->lastError(), Optional(StrEq("“İş.kdbx” kaydedilemedi.")));
    EXPECT_EQ(state->databaseURL(), vaultFile);
    EXPECT_EQ(firstTitle(), "Kaydedilmemiş");
    EXPECT_TRUE(state->isDirty());
    EXPECT_EQ(storedBookmark(), vaultFile);
}

TEST_F(AppStateVaultLifeTest, aVaultThatCannotBeEncodedIsNotMade) {
    codec.failure = std::make_exception_ptr(KdbxError::cryptoFailure("x"));
    state->createDatabase(otherFile, "parola", none);
    EXPECT_THAT(state->lastError(), Optional(KdbxError::cryptoFailure("x").errorDescription()));
    EXPECT_TRUE(state->isLocked());
    EXPECT_FALSE(files.contents.contains(otherFile));
}

TEST_F(AppStateVaultLifeTest, makingAVaultLeavesUndoSelectionAndSearch) {
    unlock();
    rename("Yeni ad");
    const auto selected = std::set{state->root()->entries[0].id};
    state->setSelectedEntryIDs(selected);
    state->setSearchText("arama");
    state->setLastError("eski hata");

    state->createDatabase(otherFile, "parola", none);

    EXPECT_TRUE(state->canUndo());
    EXPECT_EQ(state->selectedEntryIDs(), selected);
    EXPECT_EQ(state->searchText(), "arama");
    EXPECT_FALSE(state->lastError());
    EXPECT_FALSE(state->isDirty());
}

TEST_F(AppStateVaultLifeTest, lockingForgetsTheVaultAndKeepsTheFile) {
    unlock();
    rename("Yeni ad");
    state->setSelectedEntryIDs({state->root()->entries[0].id});
    state->setRoute(AppState::Route::generator(none));
    state->setSearchText("arama");
    state->setLastError("eski hata");
    state->setStatusMessage("durum");
    clipboard.copySecret("gizli");

    state->lock();

    EXPECT_TRUE(state->isLocked());
    EXPECT_FALSE(state->database());
    EXPECT_FALSE(state->selectedGroupID());
    EXPECT_TRUE(state->selectedEntryIDs().empty());
    EXPECT_FALSE(state->route());
    EXPECT_EQ(state->searchText(), "");
    EXPECT_FALSE(state->canUndo());
    EXPECT_FALSE(state->undoLabel());
    EXPECT_EQ(pasteboard.text(), "");
    EXPECT_EQ(state->databaseURL(), vaultFile);
    EXPECT_THAT(state->lastError(), Optional(StrEq("eski hata")));
    EXPECT_THAT(state->statusMessage(), Optional(StrEq("durum")));
}

TEST_F(AppStateVaultLifeTest, lockingSavesWhatIsUnsaved) {
    unlock();
    rename("Yeni ad");
    state->lock();
    EXPECT_EQ(firstTitleIn(vaultFile), "Yeni ad");
    EXPECT_FALSE(state->isDirty());
    EXPECT_FALSE(state->statusMessage());
}

TEST_F(AppStateVaultLifeTest, lockingACleanVaultWritesNothing) {
    unlock();
    state->lock();
    EXPECT_EQ(files.writes, 0);
}

TEST_F(AppStateVaultLifeTest, lockingSucceedsAlsoWhenItsSaveFails) {
    unlock();
    rename("Yeni ad");
    files.unwritable[vaultFile] = "yazılamadı";

    state->lock();

    EXPECT_TRUE(state->isLocked());
    EXPECT_FALSE(state->lastError());
    EXPECT_TRUE(state->isDirty()) << "until the next unlock clears it";
    EXPECT_EQ(firstTitleIn(vaultFile), "Banka");

    state->unlock("parola", none);
    EXPECT_FALSE(state->isDirty());
}

TEST_F(AppStateVaultLifeTest, lockingWhatIsLockedTouchesNothing) {
    state->prepare(vaultFile);
    state->setSearchText("arama");
    clipboard.copySecret("gizli");
    state->lock();
    EXPECT_EQ(pasteboard.text(), "gizli");
    EXPECT_EQ(state->searchText(), "arama");
}

TEST_F(AppStateVaultLifeTest, aLockedVaultAsksForItsCredentialsAgain) {
    unlock();
    state->lock();
    state->unlock("", none);
    EXPECT_TRUE(state->isLocked());
    state->unlock("parola", none);
    EXPECT_FALSE(state->isLocked());
}

TEST_F(AppStateVaultLifeTest, closingForgetsTheFileButNotTheBookmark) {
    unlock();
    clipboard.copySecret("gizli");
    state->closeDatabase();

    EXPECT_FALSE(state->databaseURL());
    EXPECT_TRUE(state->isLocked());
    EXPECT_EQ(pasteboard.text(), "");
    EXPECT_EQ(state->databaseName(), "Brenvik");

    launch();
    state->restoreRecentDatabase();
    EXPECT_EQ(state->databaseURL(), vaultFile);
    EXPECT_TRUE(state->isLocked());
}

TEST_F(AppStateVaultLifeTest, closingWhatIsLockedForgetsTheFileAllTheSame) {
    state->prepare(vaultFile);
    state->closeDatabase();
    EXPECT_FALSE(state->databaseURL());
}

TEST_F(AppStateVaultLifeTest, aFileThatCannotBeMarkedIsNotTheNextLaunchs) {
    state->prepare(vaultFile);
    bookmarks.unmarkable.insert(otherFile);

    state->prepare(otherFile);

    EXPECT_FALSE(storedBookmark());
    EXPECT_FALSE(settings.values.contains("recentDatabaseBookmark"));
}

TEST_F(AppStateVaultLifeTest, withoutABookmarkNothingIsRestored) {
    state->restoreRecentDatabase();
    EXPECT_FALSE(state->databaseURL());
}

TEST_F(AppStateVaultLifeTest, aChosenFileIsNotReplacedByTheRecentOne) {
    state->prepare(vaultFile);
    launch();
    state->prepare(otherFile);
    preferences->setRecentDatabaseBookmark(copyOf(bytesOf(vaultFile.native())));
    state->restoreRecentDatabase();
    EXPECT_EQ(state->databaseURL(), otherFile);
}

TEST_F(AppStateVaultLifeTest, aBookmarkOfADeletedFileStaysStored) {
    state->prepare(vaultFile);
    files.contents.clear();
    launch();
    state->restoreRecentDatabase();
    EXPECT_FALSE(state->databaseURL());
    EXPECT_EQ(storedBookmark(), vaultFile);
}

TEST_F(AppStateVaultLifeTest, aVaultThatIsAwayAtTheLaunchIsWaitedForAndNoneIsMadeInItsPlace) {
    state->prepare(vaultFile);
    auto absent = files.contents.extract(vaultFile);
    launch();

    state->awaitRecentDatabase();
    EXPECT_EQ(state->databaseURL(), vaultFile);
    EXPECT_TRUE(state->isAway());
    EXPECT_FALSE(state->offersCreation());
    EXPECT_EQ(storedBookmark(), vaultFile);

    files.contents.insert(std::move(absent));
    EXPECT_FALSE(state->isAway());
    state->unlock("parola", none);
    EXPECT_FALSE(state->isLocked());
}

TEST_F(AppStateVaultLifeTest, anExpectedVaultIsTheNextLaunchsOnceItHasBeenThere) {
    state->prepare(otherFile);
    auto absent = files.contents.extract(vaultFile);

    state->prepareExpected(vaultFile);
    EXPECT_TRUE(state->isAway());
    EXPECT_EQ(storedBookmark(), otherFile);

    files.contents.insert(std::move(absent));
    state->unlock("parola", none);
    EXPECT_FALSE(state->isLocked());
    EXPECT_EQ(storedBookmark(), vaultFile);

    files.contents[otherFile] = files.contents.at(vaultFile);
    state->prepareExpected(otherFile);
    EXPECT_EQ(storedBookmark(), otherFile);
}

TEST_F(AppStateVaultLifeTest, whoChoosesTheFileOfAnAbsentVaultForANewOneMakesIt) {
    files.contents.erase(vaultFile);
    state->prepareExpected(vaultFile);
    state->prepareNew(vaultFile, AppState::Replacing::no);
    EXPECT_FALSE(state->isAway());
    EXPECT_TRUE(state->offersCreation());
}

TEST_F(AppStateVaultLifeTest, aBookmarkThatResolvesToNothingIsPassedOver) {
    state->prepare(vaultFile);
    bookmarks.resolves = false;
    launch();
    state->restoreRecentDatabase();
    EXPECT_FALSE(state->databaseURL());
    EXPECT_FALSE(state->lastError());
    EXPECT_EQ(storedBookmark(), vaultFile);
}

}  // namespace
