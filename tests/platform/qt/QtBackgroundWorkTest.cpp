// SPDX-License-Identifier: MIT
#include "platform/qt/QtBackgroundWork.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <QCoreApplication>
#include <QTimer>

#include <atomic>
#include <stdexcept>
#include <thread>

namespace {

class QtBackgroundWorkTest : public ::testing::Test {
protected:
    int argumentCount = 1;
    char name[8] = "brenvik";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{argumentCount, arguments};
    QtBackgroundWork background;
    std::atomic<bool> isStopped = false;

    void waitForStop() {
        while (!isStopped)
            std::this_thread::yield();
    }
    BackgroundWork::Task untilStopped() {
        return {.work =
                    [this] {
                        waitForStop();
                        throw std::runtime_error("durduruldu");
                    },
                .giveUp = [this] { isStopped = true; }};
    }
};

TEST_F(QtBackgroundWorkTest, worksElsewhereWhileTheLoopGoesOn) {
    std::thread::id worker;
    int turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (++turns == 3)
            isStopped = true;
    });
    timer.start(0);

    background.run({.work =
                        [&] {
                            waitForStop();
                            worker = std::this_thread::get_id();
                        },
                    .giveUp = [] { ADD_FAILURE() << "nothing gave up"; }});

    EXPECT_GE(turns, 3);
    EXPECT_NE(worker, std::thread::id());
    EXPECT_NE(worker, std::this_thread::get_id());
}

TEST_F(QtBackgroundWorkTest, throwsWhatTheWorkThrows) {
    try {
        background.run({.work = [] { throw std::runtime_error("olmadı"); }, .giveUp = [] {}});
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "olmadı");
    }
}

TEST_F(QtBackgroundWorkTest, runsWithinARunEachToItsEnd) {
    std::vector<int> ended;
    QTimer::singleShot(0, [&] {
        background.run({.work = [] {}, .giveUp = [] {}});
        ended.push_back(2);
        isStopped = true;
    });
    background.run({.work = [this] { waitForStop(); }, .giveUp = [] {}});
    ended.push_back(1);
    EXPECT_EQ(ended, (std::vector{2, 1}));
}

TEST_F(QtBackgroundWorkTest, theProgramsEndGivesTheWorkUp) {
    bool hasGivenUp = false;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [] { QCoreApplication::exit(); });
        try {
            background.run(untilStopped());
        } catch (const std::runtime_error&) {
            hasGivenUp = true;
        }
    });
    QCoreApplication::exec();
    EXPECT_TRUE(hasGivenUp);
}

TEST_F(QtBackgroundWorkTest, theProgramsEndWaitsForWorkThatIsToFinish) {
    bool hasFinished = false;
    std::atomic<bool> isAtEnd = false;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [&] {
            QCoreApplication::exit();
            isAtEnd = true;
        });
        background.run({.work =
                            [&] {
                                while (!isAtEnd)
                                    std::this_thread::yield();
                                hasFinished = true;
                            },
                        .giveUp = [] { ADD_FAILURE() << "given up"; },
                        .atEnd = BackgroundWork::AtEnd::finishes});
    });
    QCoreApplication::exec();
    EXPECT_TRUE(hasFinished);
}

TEST_F(QtBackgroundWorkTest, butNotForEver) {
    bool hasGivenUp = false;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [] { QCoreApplication::exit(); });
        auto task = untilStopped();
        task.atEnd = BackgroundWork::AtEnd::finishes;
        EXPECT_THROW(background.run(task), std::runtime_error);
        hasGivenUp = isStopped;
    });
    QCoreApplication::exec();
    EXPECT_TRUE(hasGivenUp);
}

TEST_F(QtBackgroundWorkTest, worksInPlaceWhereNoThreadCanBeStarted) {
    pthread_attr_t usual;
    pthread_getattr_default_np(&usual);
    pthread_attr_t vast = usual;
    pthread_attr_setstacksize(&vast, std::size_t{1} << 47);
    pthread_setattr_default_np(&vast);
    std::thread::id worker;
    background.run({.work = [&] { worker = std::this_thread::get_id(); }, .giveUp = [] {}});
    pthread_setattr_default_np(&usual);
    EXPECT_EQ(worker, std::this_thread::get_id());
}

}  // namespace
