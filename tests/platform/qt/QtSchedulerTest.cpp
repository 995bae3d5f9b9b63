// SPDX-License-Identifier: MIT
#include "platform/qt/QtScheduler.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>

namespace {

using namespace std::chrono_literals;

class QtSchedulerTest : public ::testing::Test {
protected:
    int argumentCount = 1;
    char name[8] = "brenvik";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{argumentCount, arguments};
    QtScheduler scheduler;

    static void waitUntil(const std::function<bool()>& condition) {
        QElapsedTimer timer;
        timer.start();
        while (!condition() && timer.elapsed() < 10'000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    static void passTime(int milliseconds) {
        QElapsedTimer timer;
        timer.start();
        waitUntil([&] { return timer.elapsed() >= milliseconds; });
    }
};

TEST_F(QtSchedulerTest, worksOnceAndNotBeforeItsTime) {
    int runs = 0;
    QElapsedTimer timer;
    timer.start();
    qint64 elapsed = 0;
    scheduler.after(50ms, [&] {
        ++runs;
        elapsed = timer.elapsed();
    });
    EXPECT_EQ(runs, 0);
    waitUntil([&] { return runs > 0; });
    EXPECT_GE(elapsed, 50);
    passTime(120);
    EXPECT_EQ(runs, 1);
}

TEST_F(QtSchedulerTest, workWithoutADelayWaitsForTheLoopAllTheSame) {
    bool hasRun = false;
    scheduler.after(0ns, [&] { hasRun = true; });
    EXPECT_FALSE(hasRun);
    waitUntil([&] { return hasRun; });
    EXPECT_TRUE(hasRun);
}

TEST_F(QtSchedulerTest, aDelayBelowAMillisecondIsNotCutShort) {
    QElapsedTimer timer;
    timer.start();
    qint64 elapsed = -1;
    scheduler.after(1'000'001ns, [&] { elapsed = timer.nsecsElapsed(); });
    waitUntil([&] { return elapsed >= 0; });
    EXPECT_GE(elapsed, 1'000'001);
}

TEST_F(QtSchedulerTest, repeatsUntilItIsCancelled) {
    int runs = 0;
    Scheduler::Task task = 0;
    task = scheduler.every(5ms, [&] {
        if (++runs == 3)
            scheduler.cancel(task);
    });
    waitUntil([&] { return runs >= 3; });
    passTime(40);
    EXPECT_EQ(runs, 3);
}

TEST_F(QtSchedulerTest, whatIsCancelledNeverRuns) {
    bool hasRun = false;
    const auto task = scheduler.after(5ms, [&] { hasRun = true; });
    scheduler.cancel(task);
    scheduler.cancel(task);
    scheduler.cancel(0);
    scheduler.cancel(4711);
    passTime(40);
    EXPECT_FALSE(hasRun);
}

TEST_F(QtSchedulerTest, tasksHaveNumbersOfTheirOwn) {
    const auto first = scheduler.after(1h, [] {});
    scheduler.cancel(first);
    const auto second = scheduler.after(1h, [] {});
    EXPECT_NE(first, 0U);
    EXPECT_NE(first, second);
}

TEST_F(QtSchedulerTest, aDelayOfAgesIsNoDelayOfNothing) {
    bool hasRun = false;
    scheduler.after(24h * 365 * 200, [&] { hasRun = true; });
    passTime(20);
    EXPECT_FALSE(hasRun);
}

TEST_F(QtSchedulerTest, whatIsPendingGoesWithTheScheduler) {
    bool hasRun = false;
    {
        QtScheduler shortLived;
        shortLived.after(1ms, [&] { hasRun = true; });
    }
    passTime(20);
    EXPECT_FALSE(hasRun);
}

TEST_F(QtSchedulerTest, workMayEndItsScheduler) {
    auto* doomed = new QtScheduler;
    bool hasRun = false;
    doomed->after(1ms, [&] {
        hasRun = true;
        doomed->deleteLater();
    });
    waitUntil([&] { return hasRun; });
    passTime(5);
}

TEST_F(QtSchedulerTest, goesByTheSystemsClock) {
    EXPECT_NEAR(scheduler.now().seconds, Timestamp::now().seconds, 1);
}

}  // namespace
