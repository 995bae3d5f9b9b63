// SPDX-License-Identifier: MIT
#include "tests/support/FakeScheduler.h"

using namespace std::chrono_literals;

TEST(FakeSchedulerTest, runsWhatFallsDueInTheOrderOfDueTime) {
    FakeScheduler clock;
    std::string ran;
    clock.after(2s, [&] { ran += 'c'; });
    clock.after(1s, [&] { ran += 'a'; });
    clock.after(1s, [&] { ran += 'b'; });
    clock.after(0s, [&] { ran += '0'; });
    EXPECT_EQ(ran, "");

    clock.advance(0s);
    EXPECT_EQ(ran, "0");
    clock.advance(1999ms);
    EXPECT_EQ(ran, "0ab");
    clock.advance(1ms);
    EXPECT_EQ(ran, "0abc");
}

TEST(FakeSchedulerTest, runsWhatIsAskedForOnTheWay) {
    FakeScheduler clock;
    std::string ran;
    clock.after(1s, [&] {
        ran += 'a';
        clock.after(1s, [&] { ran += 'b'; });
        clock.after(2s, [&] { ran += 'c'; });
    });

    clock.advance(2s);

    EXPECT_EQ(ran, "ab");
}

TEST(FakeSchedulerTest, repeatsUntilCancelledAlsoByTheWorkItself) {
    FakeScheduler clock;
    int ran = 0;
    Scheduler::Task task = 0;
    task = clock.every(1s, [&] {
        if (++ran == 3)
            clock.cancel(task);
    });

    clock.advance(2500ms);
    EXPECT_EQ(ran, 2);
    clock.advance(10s);
    EXPECT_EQ(ran, 3);
}

TEST(FakeSchedulerTest, showsTheDueTimeWhileWorkRuns) {
    FakeScheduler clock;
    const double start = clock.now().seconds;
    double seen = 0;
    clock.after(1500ms, [&] { seen = clock.now().seconds; });

    clock.advance(4s);

    EXPECT_EQ(seen - start, 1.5);
    EXPECT_EQ(clock.now().seconds - start, 4);
}

TEST(FakeSchedulerTest, forgetsACancelledTask) {
    FakeScheduler clock;
    bool ran = false;
    clock.cancel(clock.after(1s, [&] { ran = true; }));
    clock.cancel(0);

    clock.advance(2s);

    EXPECT_FALSE(ran);
}
