// SPDX-License-Identifier: MIT
#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::Optional;
using ::testing::StrEq;
using Purpose = AppState::DerivationPurpose;

/// A session in whose derivations something happens.
class AppStateDerivationTest : public StateTest {
protected:
    std::vector<Purpose> purposes;

    AppStateDerivationTest() {
        codec.rounds = 100'000;  // long enough to be given up
        QObject::connect(&*state, &AppState::derivationChanged, [this] {
            if (const auto purpose = state->derivation())
                purposes.push_back(*purpose);
        });
    }

    void duringTheNext(std::function<void()> happens) {
        background.meanwhile = [happens = std::move(happens)](const BackgroundWork::Task&) { happens(); };
    }
    void giveUpTheNext() {
        duringTheNext([this] { state->giveUpDerivation(); });
    }
    void unlockDirty() {
        unlock();
        rename("Yeni ad");
    }
};

TEST_F(AppStateDerivationTest, eachVerbSaysWhatItDerivesFor) {
    unlockDirty();
    state->save();
    state->saveAs(otherFile);
    state->lock();
    EXPECT_THAT(purposes, ElementsAre(Purpose::unlocking, Purpose::saving, Purpose::saving));

    purposes.clear();
    state->createDatabase("/kasa/Yeni.kdbx", "parola", std::nullopt);
    state->edit("Grup Ekle", [](KdbxDatabase&) {});
    state->lock();
    EXPECT_THAT(purposes, ElementsAre(Purpose::creating, Purpose::locking));
    EXPECT_FALSE(state->derivation());
}

TEST_F(AppStateDerivationTest, nothingOfAnUnlockIsSeenBeforeItsEnd) {
    state->prepare(vaultFile);
    std::vector<std::string> heard;
    QObject::connect(&*state, &AppState::derivationChanged, [&] { heard.emplace_back("derivation"); });
    QObject::connect(&*state, &AppState::isLockedChanged, [&] { heard.emplace_back("isLocked"); });
    bool wasLocked = false;
    duringTheNext([&] { wasLocked = state->isLocked() && !state->database() && heard.size() == 1; });

    state->unlock("parola", std::nullopt);

    EXPECT_TRUE(wasLocked);
    // The end of the derivation comes first: what was held back by it is there again for the views of an open vault.
    EXPECT_THAT(heard, ElementsAre("derivation", "derivation", "isLocked"));
}

TEST_F(AppStateDerivationTest, viewsHearAtOnceWhatElseHappensMeanwhile) {
    unlockDirty();
    int heard = 0;
    duringTheNext([&] {
        QObject::connect(&*state, &AppState::statusMessageChanged, [&] { ++heard; });
        state->setStatusMessage("Pano temizlendi");
        EXPECT_EQ(heard, 1);
    });
    state->save();
    EXPECT_EQ(heard, 2);
}

TEST_F(AppStateDerivationTest, timersGoOnWhileAKeyIsDerived) {
    unlockDirty();
    state->copyPassword(&bank());
    duringTheNext([&] { clock.advance(30s); });
    state->save();
    EXPECT_EQ(pasteboard.text(), "");
}

TEST_F(AppStateDerivationTest, anUnlockThatIsGivenUpLeavesEverythingAsItWas) {
    state->prepare(vaultFile);
    state->setLastError("eski hata");
    giveUpTheNext();

    state->unlock("parola", std::nullopt);

    EXPECT_TRUE(state->isLocked());
    EXPECT_THAT(state->lastError(), Optional(StrEq("eski hata")));
    EXPECT_EQ(state->databaseURL(), vaultFile);
    state->unlock("parola", std::nullopt);
    EXPECT_FALSE(state->isLocked());
}

TEST_F(AppStateDerivationTest, aCreationThatIsGivenUpWritesNothing) {
    giveUpTheNext();
    state->createDatabase(otherFile, "parola", std::nullopt);
    EXPECT_TRUE(state->isLocked());
    EXPECT_FALSE(state->lastError());
    EXPECT_FALSE(state->databaseURL());
    EXPECT_FALSE(files.contents.contains(otherFile));
}

TEST_F(AppStateDerivationTest, aSaveThatIsGivenUpStaysUnsaved) {
    unlockDirty();
    giveUpTheNext();
    state->save();
    EXPECT_TRUE(state->isDirty());
    EXPECT_FALSE(state->lastError());
    EXPECT_FALSE(state->statusMessage());
    EXPECT_EQ(firstTitleIn(vaultFile), "Banka");

    giveUpTheNext();
    state->saveAs(otherFile);
    EXPECT_TRUE(state->isDirty());
    EXPECT_EQ(state->databaseURL(), vaultFile);
    EXPECT_FALSE(files.contents.contains(otherFile));
}

TEST_F(AppStateDerivationTest, aLockThatIsGivenUpKeepsTheSessionAndWhatIsUnsaved) {
    unlockDirty();
    giveUpTheNext();
    state->lock();
    EXPECT_FALSE(state->isLocked());
    EXPECT_TRUE(state->isDirty());
    EXPECT_EQ(firstTitle(), "Yeni ad");
    EXPECT_TRUE(state->canUndo());

    giveUpTheNext();
    state->closeDatabase();
    EXPECT_FALSE(state->isLocked());
    EXPECT_EQ(state->databaseURL(), vaultFile);
}

TEST_F(AppStateDerivationTest, theProgramsEndGivesAnUnlockUpAndWaitsForASave) {
    std::vector<BackgroundWork::AtEnd> ends;
    const auto note = [&](const BackgroundWork::Task& task) { ends.push_back(task.atEnd); };
    using enum BackgroundWork::AtEnd;

    state->prepare(vaultFile);
    background.meanwhile = note;
    state->unlock("parola", std::nullopt);
    background.meanwhile = note;
    state->save();
    rename("Yeni ad");
    background.meanwhile = note;
    state->lock();
    background.meanwhile = note;
    state->createDatabase(otherFile, "parola", std::nullopt);

    EXPECT_THAT(ends, ElementsAre(givesUp, finishes, finishes, givesUp));
}

TEST_F(AppStateDerivationTest, theProgramsEndGivesUpWhatItDoesNotWaitFor) {
    unlockDirty();
    background.meanwhile = [](const BackgroundWork::Task& task) { task.giveUp(); };
    state->save();
    EXPECT_TRUE(state->isDirty());
}

TEST_F(AppStateDerivationTest, noOtherVerbEntersTheSessionMeanwhile) {
    unlockDirty();
    duringTheNext([&] {
        const auto runs = background.runs;
        state->save();
        state->saveAs(otherFile);
        state->unlock("parola", std::nullopt);
        state->createDatabase(otherFile, "başka", std::nullopt);
        state->prepare(otherFile);
        EXPECT_EQ(background.runs, runs);
        EXPECT_FALSE(state->isLocked());
        EXPECT_EQ(state->databaseURL(), vaultFile);
    });
    state->save();
    EXPECT_FALSE(state->isDirty());
    EXPECT_EQ(files.writes, 1);
    EXPECT_EQ(firstTitleIn(vaultFile), "Yeni ad");
}

TEST_F(AppStateDerivationTest, aSecondUnlockDoesNotEnterTheFirst) {
    state->prepare(vaultFile);
    duringTheNext([&] { state->unlock("yanlış", std::nullopt); });
    state->unlock("parola", std::nullopt);
    EXPECT_FALSE(state->isLocked());
    EXPECT_FALSE(state->lastError());
    EXPECT_EQ(background.runs, 1);
}

TEST_F(AppStateDerivationTest, aChangeThatIsMadeDuringASaveIsStillUnsavedAfterIt) {
    unlockDirty();
    duringTheNext([&] { rename("Daha yeni"); });
    state->save();
    EXPECT_EQ(firstTitleIn(vaultFile), "Yeni ad");
    EXPECT_TRUE(state->isDirty());
    EXPECT_EQ(firstTitle(), "Daha yeni");

    duringTheNext([&] { state->undo(); });
    state->saveAs(otherFile);
    EXPECT_EQ(firstTitleIn(otherFile), "Daha yeni");
    EXPECT_TRUE(state->isDirty());
}

TEST_F(AppStateDerivationTest, aLockThatIsGivenUpLeavesWhatIsShownAndCopied) {
    unlockDirty();
    const auto entry = root().entries[1].id;
    state->setSearchText("posta");
    state->setSelectedEntryIDs({entry});
    state->setRoute(AppState::Route::editEntry(entry));
    state->setLastError("Bir hata.");
    clipboard.copySecret("gizli");
    giveUpTheNext();

    state->lock();

    EXPECT_EQ(state->searchText(), "posta");
    EXPECT_EQ(state->selectedEntryIDs(), std::set{entry});
    EXPECT_TRUE(state->route());
    EXPECT_EQ(state->lastError(), "Bir hata.");
    EXPECT_EQ(pasteboard.text(), "gizli");
    EXPECT_TRUE(rescues.contents.empty()) << "nothing has ended";
}

TEST_F(AppStateDerivationTest, typingEndsWithALockAlsoWhereThatIsGivenUp) {
    unlockDirty();
    const auto stops = autoTyping.stops;
    duringTheNext([&] {
        EXPECT_EQ(autoTyping.stops, stops + 1) << "before the wait";
        state->giveUpDerivation();
    });

    state->lock();

    EXPECT_FALSE(state->isLocked());
    EXPECT_EQ(autoTyping.stops, stops + 1);
}

TEST_F(AppStateDerivationTest, aChangeThatIsMadeDuringALockIsSavedToo) {
    unlockDirty();
    duringTheNext([&] { rename("Daha yeni"); });
    state->lock();
    EXPECT_TRUE(state->isLocked());
    EXPECT_EQ(firstTitleIn(vaultFile), "Daha yeni");
}

TEST_F(AppStateDerivationTest, aLockThatIsAskedForDuringASaveComesAfterIt) {
    unlockDirty();
    duringTheNext([&] {
        state->lock();
        EXPECT_FALSE(state->isLocked());
    });
    state->save();
    EXPECT_FALSE(state->isLocked());

    clock.advance(0s);

    EXPECT_TRUE(state->isLocked());
    EXPECT_EQ(state->databaseURL(), vaultFile);
    EXPECT_EQ(files.writes, 1);
}

TEST_F(AppStateDerivationTest, ofALockAndAClosingThatAreAskedForBothAreDone) {
    unlockDirty();
    duringTheNext([&] {
        state->closeDatabase();
        state->lock();
    });
    state->save();
    clock.advance(0s);
    EXPECT_TRUE(state->isLocked());
    EXPECT_FALSE(state->databaseURL());
}

TEST_F(AppStateDerivationTest, aLockComesAlsoAfterASaveThatFailed) {
    unlockDirty();
    files.unwritable[vaultFile] = "yazılamadı";
    duringTheNext([&] { state->lock(); });
    state->save();
    EXPECT_THAT(state->lastError(), Optional(StrEq("yazılamadı")));
    clock.advance(0s);
    EXPECT_TRUE(state->isLocked());
}

TEST_F(AppStateDerivationTest, whoGivesUpASaveGivesUpTheLockThatWasToFollow) {
    unlockDirty();
    duringTheNext([&] {
        state->lock();
        state->giveUpDerivation();
    });
    state->save();
    clock.advance(0s);
    EXPECT_FALSE(state->isLocked());
    EXPECT_TRUE(state->isDirty());
}

TEST_F(AppStateDerivationTest, theFractionIsThatOfTheDerivationAtHand) {
    EXPECT_EQ(state->derivationFraction(), 0);
    state->giveUpDerivation();  // of none
    unlock();
    background.meanwhile = [&](const BackgroundWork::Task& task) {
        EXPECT_EQ(state->derivationFraction(), 0);
        task.work();
        EXPECT_EQ(state->derivationFraction(), 1);
    };
    state->save();
    EXPECT_EQ(state->derivationFraction(), 0);
}

}  // namespace
