// SPDX-License-Identifier: MIT
#include "platform/posix/WorkThread.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <semaphore>
#include <vector>

namespace {

TEST(WorkThreadTest, worksBesideTheCaller) {
    WorkThread thread;
    std::binary_semaphore mayGoOn(0);
    bool isDone = false;

    thread.start([&] {
        mayGoOn.acquire();
        isDone = true;
    });
    mayGoOn.release();  // never reached if the caller's thread did the work
    thread.finish();

    EXPECT_TRUE(isDone);
}

TEST(WorkThreadTest, worksInTheOrderOfAskingAndGoesOnAfterAPause) {
    WorkThread thread;
    std::vector<int> done;

    for (int piece = 0; piece < 100; ++piece) {
        thread.start([&done, piece] { done.push_back(piece); });
        if (piece % 7 == 0)
            thread.finish();
    }
    thread.finish();

    ASSERT_EQ(done.size(), 100U);
    EXPECT_TRUE(std::ranges::is_sorted(done));
}

TEST(WorkThreadTest, itsEndWaitsForTheWork) {
    bool isDone = false;
    {
        WorkThread thread;
        thread.start([&] { isDone = true; });
    }
    EXPECT_TRUE(isDone);
}

TEST(WorkThreadTest, whatTheWorkHoldsIsGoneWhenItHasEnded) {
    WorkThread thread;
    auto held = std::make_shared<int>(1);

    thread.start([copy = held] {});
    thread.finish();

    EXPECT_EQ(held.use_count(), 1);
}

TEST(WorkThreadTest, finishingWithoutWorkReturns) {
    WorkThread().finish();
}

}  // namespace
