// SPDX-License-Identifier: MIT
#include "platform/qt/TerminationSignals.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>

#include <csignal>

namespace {

TEST(TerminationSignalsTest, eachOfThemIsANormalQuit) {
    int argumentCount = 1;
    char name[] = "brenvik";
    char* arguments[] = {name, nullptr};
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        QCoreApplication application(argumentCount, arguments);
        const TerminationSignals endings;
        bool isToldOfQuit = false;
        QObject::connect(&application, &QCoreApplication::aboutToQuit, [&] { isToldOfQuit = true; });
        QTimer::singleShot(0, [signal] { std::raise(signal); });

        EXPECT_EQ(QCoreApplication::exec(), 0) << signal;
        EXPECT_TRUE(isToldOfQuit) << signal;
    }
}

TEST(TerminationSignalsTest, endProcessesAsBeforeOnceItIsGone) {
    int argumentCount = 1;
    char name[] = "brenvik";
    char* arguments[] = {name, nullptr};
    {
        const QCoreApplication application(argumentCount, arguments);
        const TerminationSignals endings;
    }
    struct sigaction action {};
    ASSERT_EQ(sigaction(SIGTERM, nullptr, &action), 0);
    EXPECT_EQ(action.sa_handler, SIG_DFL);
}

}  // namespace
