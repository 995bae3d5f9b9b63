// SPDX-License-Identifier: MIT
#include "app/state/AutoLock.h"

#include "tests/app/state/StateFakes.h"
#include "tests/support/FakeSession.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

using namespace std::chrono_literals;
using ::testing::Optional;
using ::testing::StrEq;

constexpr const char* unsavable = "Kasa otomatik kilitlenmedi, çünkü değişiklikler kaydedilemedi. Disk dolu.";
constexpr const char* givenUp = "Kasa otomatik kilitlenmedi, çünkü kaydetmekten vazgeçildi.";

class AutoLockTest : public StateTest {
protected:
    FakeSessionEvents events;
    FakeUserInput input{clock};
    std::optional<AutoLock> autoLock{
        std::in_place,
        AutoLock::Services{
            .events = events, .input = input, .scheduler = clock, .preferences = *preferences, .state = *state}};
    int locks = 0;

    AutoLockTest() {
        QObject::connect(&*state, &AppState::isLockedChanged, &*state, [this] { locks += state->isLocked() ? 1 : 0; });
    }

    void duringTheNextDerivation(std::function<void()> happens) {
        codec.rounds = 100'000;  // long enough to be given up
        background.meanwhile = [happens = std::move(happens)](const BackgroundWork::Task&) { happens(); };
    }
    void unlockUnsavable() {
        unlock();
        rename("Değişmiş");
        files.unwritable[vaultFile] = "Disk dolu.";
    }
    void openForm() {
        state->setRoute(AppState::Route::editEntry(bank().id));
        state->setFormContent([](KdbxDatabase& database) {
            database.root.entries.mutableAt(0).title = "Yazılıyordu";
            return true;
        });
    }
};

TEST_F(AutoLockTest, aSessionThatIsLeftIsLocked) {
    unlock();
    const auto held = events.leave();
    EXPECT_TRUE(state->isLocked());
    EXPECT_FALSE(state->lastError());
    EXPECT_TRUE(held.expired()) << "nothing waits for what is done";
}

TEST_F(AutoLockTest, manyReportsOfOneLeavingAreOneLock) {
    unlock();
    for (int part = 0; part < 4; ++part)
        events.leave();
    EXPECT_EQ(locks, 1);
    unlock();
    events.leave();
    EXPECT_EQ(locks, 2);
}

TEST_F(AutoLockTest, whatIsUnsavedIsSavedFirst) {
    unlock();
    rename("Değişmiş");
    events.leave();
    EXPECT_TRUE(state->isLocked());
    EXPECT_EQ(firstTitleIn(vaultFile), "Değişmiş");
}

TEST_F(AutoLockTest, whoDoesNotWantItStaysOpen) {
    preferences->setLockWithSession(false);
    unlock();
    const auto held = events.leave();
    EXPECT_FALSE(state->isLocked());
    EXPECT_TRUE(held.expired());
    preferences->setLockWithSession(true);
    events.leave();
    EXPECT_TRUE(state->isLocked());
}

TEST_F(AutoLockTest, whatCannotBeSavedKeepsTheVaultOpenAndSaysWhy) {
    unlockUnsavable();
    const auto held = events.leave();
    EXPECT_FALSE(state->isLocked());
    EXPECT_EQ(firstTitle(), "Değişmiş");
    EXPECT_THAT(state->lastError(), Optional(StrEq(unsavable)));
    EXPECT_FALSE(state->isNotice());
    EXPECT_EQ(rescues.contents.size(), 1U) << "a copy exists as well";
    EXPECT_TRUE(held.expired());
}

TEST_F(AutoLockTest, oneLeavingIsOneAttempt) {
    unlockUnsavable();
    events.leave();
    const auto runs = background.runs;
    events.leave();
    clock.advance(1s);
    events.leave();
    EXPECT_EQ(background.runs, runs);
    files.unwritable.clear();
    clock.advance(1min);
    events.leave();
    EXPECT_TRUE(state->isLocked());
}

TEST_F(AutoLockTest, whoSavesAfterAFailedLockMayLeaveAtOnce) {
    unlockUnsavable();
    events.leave();
    files.unwritable.clear();
    state->save();
    events.leave();
    EXPECT_TRUE(state->isLocked());
}

TEST_F(AutoLockTest, aSaveThatIsGivenUpKeepsTheVaultOpenAndSaysSo) {
    unlock();
    rename("Değişmiş");
    duringTheNextDerivation([this] { state->giveUpDerivation(); });
    events.leave();
    EXPECT_FALSE(state->isLocked());
    EXPECT_TRUE(state->isDirty());
    EXPECT_THAT(state->lastError(), Optional(StrEq(givenUp)));
}

TEST_F(AutoLockTest, theUsersOwnLockStillNeverFails) {
    unlockUnsavable();
    state->lock();
    EXPECT_TRUE(state->isLocked());
    EXPECT_FALSE(state->lastError());
}

TEST_F(AutoLockTest, sleepWaitsUntilTheLockIsDone) {
    unlock();
    rename("Değişmiş");
    std::weak_ptr<void> held;
    bool waited = false;
    duringTheNextDerivation([&] {
        const auto second = events.leave();
        waited = !held.expired() || !second.expired();
    });
    held = events.leave();
    EXPECT_TRUE(waited);
    EXPECT_TRUE(held.expired());
    EXPECT_EQ(locks, 1);
}

TEST_F(AutoLockTest, aVaultThatIsJustBeingOpenedIsLockedAfterwards) {
    state->prepare(vaultFile);
    std::weak_ptr<void> held;
    duringTheNextDerivation([&] { held = events.leave(); });
    state->unlock("parola", std::nullopt);
    EXPECT_FALSE(held.expired());
    clock.advance(0s);
    EXPECT_TRUE(state->isLocked());
    EXPECT_EQ(locks, 1);
    EXPECT_TRUE(held.expired());
}

TEST_F(AutoLockTest, aSaveThatIsUnderWayIsFollowedByTheLockEvenIfItIsGivenUp) {
    for (const bool isGivenUp : {false, true}) {
        unlock();
        rename(isGivenUp ? "İki" : "Bir");
        duringTheNextDerivation([&] {
            events.leave();
            if (isGivenUp)
                state->giveUpDerivation();
        });
        state->save();
        EXPECT_FALSE(state->isLocked());
        clock.advance(0s);
        EXPECT_TRUE(state->isLocked()) << isGivenUp;
        EXPECT_EQ(firstTitleIn(vaultFile), isGivenUp ? "İki" : "Bir");
        codec.rounds = 1;
    }
}

TEST_F(AutoLockTest, aFormIsKept) {
    unlock();
    openForm();
    events.leave();
    EXPECT_TRUE(state->isLocked());
    unlock();
    EXPECT_TRUE(state->rescueOffer());
}

TEST_F(AutoLockTest, aFormThatCannotBeKeptKeepsTheVaultOpen) {
    unlock();
    openForm();
    rescues.failure = "Disk dolu.";
    events.leave();
    EXPECT_FALSE(state->isLocked());
    EXPECT_TRUE(state->route());
    EXPECT_THAT(state->lastError(), Optional(StrEq(unsavable)));
}

TEST_F(AutoLockTest, typingEndsAlsoWhereTheVaultStaysOpen) {
    unlockUnsavable();
    const auto stops = autoTyping.stops;
    events.leave();
    EXPECT_GT(autoTyping.stops, stops);
}

TEST_F(AutoLockTest, theEndOfTheSessionLocksAndKeepsWhatItCannotSave) {
    unlockUnsavable();
    const auto held = events.end();
    EXPECT_EQ(rescues.contents.size(), 1U);
    EXPECT_TRUE(held.expired());
    files.unwritable.clear();
    clock.advance(1min);
    events.end();
    EXPECT_TRUE(state->isLocked());
    EXPECT_EQ(firstTitleIn(vaultFile), "Değişmiş");
}

TEST_F(AutoLockTest, theEndOfTheSessionKeepsWhatIsUnsavedAlsoWhereItLocksNothing) {
    preferences->setLockWithSession(false);
    unlock();
    rename("Değişmiş");
    events.end();
    EXPECT_FALSE(state->isLocked());
    EXPECT_EQ(firstTitleIn(vaultFile), "Banka") << "the vault's file stays as it is";
    EXPECT_EQ(rescues.contents.size(), 1U);
}

TEST_F(AutoLockTest, whatComesAfterItsEndIsPassedOver) {
    unlock();
    autoLock.reset();
    events.leave();
    clock.advance(2h);
    EXPECT_FALSE(state->isLocked());
}

// Without input

TEST_F(AutoLockTest, nothingLocksByItselfAtFirst) {
    unlock();
    clock.advance(24h);
    EXPECT_FALSE(state->isLocked());
}

TEST_F(AutoLockTest, aVaultIsLockedAfterTheMinutesThatAreSet) {
    for (const int minutes : {1, 5, 60}) {
        preferences->setLockAfterMinutes(minutes);
        unlock();
        clock.advance(std::chrono::minutes(minutes) - 1s);
        EXPECT_FALSE(state->isLocked()) << minutes;
        clock.advance(1s);
        EXPECT_TRUE(state->isLocked()) << minutes;
    }
}

TEST_F(AutoLockTest, inputBeginsTheTimeAnew) {
    preferences->setLockAfterMinutes(2);
    unlock();
    for (int minute = 0; minute < 10; ++minute) {
        clock.advance(1min);
        input.act();
    }
    EXPECT_FALSE(state->isLocked());
    clock.advance(1min + 59s);
    EXPECT_FALSE(state->isLocked());
    clock.advance(2s);
    EXPECT_TRUE(state->isLocked());
}

TEST_F(AutoLockTest, openingAVaultCountsAsInput) {
    preferences->setLockAfterMinutes(1);
    clock.advance(1h);
    unlock();
    clock.advance(59s);
    EXPECT_FALSE(state->isLocked());
    clock.advance(1s);
    EXPECT_TRUE(state->isLocked());
}

TEST_F(AutoLockTest, theTimeOfDayMayBeSetAtAnyMoment) {
    preferences->setLockAfterMinutes(5);
    unlock();
    clock.setTimeOfDay(1h);
    clock.advance(4min);
    EXPECT_FALSE(state->isLocked());
    clock.setTimeOfDay(-2h);
    clock.advance(1min);
    EXPECT_TRUE(state->isLocked());
}

TEST_F(AutoLockTest, sleepCounts) {
    preferences->setLockAfterMinutes(10);
    unlock();
    clock.advance(4min);
    clock.sleep(5min);
    clock.advance(30s);
    EXPECT_FALSE(state->isLocked());
    clock.advance(31s);
    EXPECT_TRUE(state->isLocked());
}

TEST_F(AutoLockTest, whoWakesTheComputerAfterHoursFindsTheVaultLocked) {
    preferences->setLockAfterMinutes(10);
    unlock();
    clock.advance(3min);
    clock.sleep(8h);
    input.act();
    clock.advance(5s);
    EXPECT_TRUE(state->isLocked());
}

TEST_F(AutoLockTest, inputAfterAShortSleepBeginsTheTimeAnew) {
    preferences->setLockAfterMinutes(10);
    unlock();
    clock.advance(5min);
    clock.sleep(4min);
    clock.advance(5s);
    input.act();
    clock.advance(9min + 50s);
    EXPECT_FALSE(state->isLocked());
    clock.advance(15s);
    EXPECT_TRUE(state->isLocked());
}

TEST_F(AutoLockTest, aChangeOfTheMinutesCountsFromThen) {
    preferences->setLockAfterMinutes(60);
    unlock();
    clock.advance(30min);
    preferences->setLockAfterMinutes(5);
    clock.advance(4min);
    EXPECT_FALSE(state->isLocked());
    preferences->setLockAfterMinutes(0);
    clock.advance(24h);
    EXPECT_FALSE(state->isLocked());
    preferences->setLockAfterMinutes(1);
    clock.advance(1min);
    EXPECT_TRUE(state->isLocked());
}

TEST_F(AutoLockTest, whatCannotBeSavedIsTriedOnceUntilTheUserComesBack) {
    preferences->setLockAfterMinutes(1);
    unlockUnsavable();
    clock.advance(1min);
    EXPECT_FALSE(state->isLocked());
    EXPECT_THAT(state->lastError(), Optional(StrEq(unsavable)));
    const auto runs = background.runs;
    clock.advance(1h);
    EXPECT_EQ(background.runs, runs);

    files.unwritable.clear();
    input.act();
    clock.advance(1min + 5s);
    EXPECT_TRUE(state->isLocked());
}

TEST_F(AutoLockTest, nothingIsLookedAtWhileThereIsNothingToLock) {
    preferences->setLockAfterMinutes(1);
    const auto waiting = clock.waitingCount();
    unlock();
    EXPECT_EQ(clock.waitingCount(), waiting + 1);
    state->lock();
    EXPECT_EQ(clock.waitingCount(), waiting);
}

}  // namespace
