// SPDX-License-Identifier: MIT
#include "core/platform/Coroutine.h"

#include "tests/support/FakeScheduler.h"

#include <gmock/gmock.h>

#include <stdexcept>

using testing::ElementsAre;
using testing::IsEmpty;

using namespace std::chrono_literals;

namespace {

using Log = std::vector<std::string>;

/// Writes its name down when it goes.
struct Local {
    Log& log;
    std::string name;
    ~Local() { log.push_back(name + " goes"); }
};

struct CoroutineTest : testing::Test {
    Coroutine leaf(std::chrono::nanoseconds duration, Sleeper::Cancellable cancellable = Sleeper::Cancellable::yes) {
        const Local local{log, "leaf"};
        log.push_back("leaf begins");
        co_await sleeper.sleep(duration, cancellable);
        log.push_back("leaf ends");
    }

    Coroutine parent(std::chrono::nanoseconds duration) {
        const Local local{log, "parent"};
        co_await leaf(duration);
        log.push_back("parent ends");
    }

    Coroutine failing(std::chrono::nanoseconds duration) {
        co_await sleeper.sleep(duration);
        throw std::runtime_error("failure");
    }

    Coroutine catching(Coroutine inner) {
        try {
            co_await inner;
            log.push_back("no failure");
        } catch (const std::exception& error) {
            log.push_back(error.what());
        }
    }

    Coroutine counting(int rounds) {
        for (int i = 0; i < rounds; ++i)
            co_await leaf(0ns);
    }

    FakeScheduler clock;
    Log log;
    Sleeper sleeper{clock};
};

}  // namespace

TEST_F(CoroutineTest, beginsAtOnceAndGoesOnAfterItsSleep) {
    const auto coroutine = parent(20ms);
    EXPECT_THAT(log, ElementsAre("leaf begins"));
    clock.advance(19ms);
    EXPECT_EQ(log.size(), 1u);

    clock.advance(1ms);

    EXPECT_THAT(log, ElementsAre("leaf begins", "leaf ends", "leaf goes", "parent ends", "parent goes"));
    EXPECT_EQ(clock.waitingCount(), 0u);
}

TEST_F(CoroutineTest, doesNotWaitForASleepOfNoTime) {
    const auto none = leaf(0ns);
    const auto negative = leaf(-1ns);

    EXPECT_THAT(log, ElementsAre("leaf begins", "leaf ends", "leaf goes", "leaf begins", "leaf ends", "leaf goes"));
}

TEST_F(CoroutineTest, takesNoStackForWhatDoesNotWait) {
    const auto coroutine = counting(100'000);

    EXPECT_EQ(log.size(), 300'000u);
}

TEST_F(CoroutineTest, givesItsFailureToTheCoroutineThatAwaitsIt) {
    const auto atOnce = catching(failing(0ns));
    EXPECT_THAT(log, ElementsAre("failure"));

    const auto later = catching(failing(1ms));
    clock.advance(1ms);
    EXPECT_THAT(log, ElementsAre("failure", "failure"));
}

TEST_F(CoroutineTest, keepsAFailureThatIsNotAwaitedToItself) {
    const auto coroutine = failing(1ms);

    clock.advance(1ms);

    EXPECT_TRUE(coroutine.await_ready());
}

TEST_F(CoroutineTest, dropsItsLocalsFromTheInnermostOnWhenItIsDestroyed) {
    {
        const auto coroutine = parent(20ms);
        clock.advance(1ms);
    }

    EXPECT_THAT(log, ElementsAre("leaf begins", "leaf goes", "parent goes"));
}

TEST_F(CoroutineTest, canBeMoved) {
    auto first = leaf(20ms);
    auto second = std::move(first);
    auto third = leaf(0ns);
    third = std::move(second);
    log.clear();

    clock.advance(20ms);

    EXPECT_THAT(log, ElementsAre("leaf ends", "leaf goes"));
}

TEST_F(CoroutineTest, failsWithinTheCallThatCancelsItsSleep) {
    const auto coroutine = catching(parent(20ms));
    log.clear();

    sleeper.cancel();

    EXPECT_THAT(log, ElementsAre("leaf goes", "parent goes", "İşlem iptal edildi."));
    EXPECT_EQ(clock.waitingCount(), 0u);
}

TEST_F(CoroutineTest, failsAtEachSleepAfterACancellation) {
    sleeper.cancel();
    sleeper.cancel();

    const auto coroutine = catching(leaf(1ms));

    EXPECT_THAT(log, ElementsAre("leaf begins", "leaf goes", "İşlem iptal edildi."));
}

TEST_F(CoroutineTest, doesNotFailAtASleepOfNoTimeAfterACancellation) {
    sleeper.cancel();

    const auto coroutine = catching(leaf(0ns));

    EXPECT_THAT(log, ElementsAre("leaf begins", "leaf ends", "leaf goes", "no failure"));
}

TEST_F(CoroutineTest, sleepsOnWhereItCannotBeCancelled) {
    const auto coroutine = catching(leaf(20ms, Sleeper::Cancellable::no));
    sleeper.cancel();
    EXPECT_THAT(log, ElementsAre("leaf begins"));

    clock.advance(20ms);

    EXPECT_THAT(log, ElementsAre("leaf begins", "leaf ends", "leaf goes", "no failure"));
}

TEST_F(CoroutineTest, leavesNothingWithTheSchedulerWhenTheSleeperGoes) {
    {
        Sleeper own(clock);
        const auto sleeping = [](Sleeper& where) -> Coroutine { co_await where.sleep(20ms); };
        const auto coroutine = sleeping(own);
        EXPECT_EQ(clock.waitingCount(), 1u);
    }

    EXPECT_EQ(clock.waitingCount(), 0u);
}
