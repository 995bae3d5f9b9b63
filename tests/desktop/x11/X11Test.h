// SPDX-License-Identifier: MIT
#pragma once

#include "tests/desktop/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <cstdlib>
#include <functional>

/// A display of its own, which is that of the environment, and Qt's loop.
class X11Test : public testing::Test {
protected:
    X11Test() { qputenv("DISPLAY", display.environment().value("DISPLAY").toLocal8Bit()); }

    void SetUp() override { ASSERT_TRUE(display.isRunning()); }

    /// Lets the loop run until something holds; whether it came to hold.
    static bool comesTrue(const std::function<bool()>& condition, int milliseconds = 20'000) {
        QElapsedTimer elapsed;
        elapsed.start();
        QTimer tick;
        tick.start(5);
        while (!condition() && elapsed.elapsed() < milliseconds)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);  // which blocks, as the program does
        return condition();
    }

    static void passTime(int milliseconds) {
        comesTrue([] { return false; }, milliseconds);
    }

    VirtualDisplay display;

private:
    int m_argumentCount = 1;
    char m_name[8] = "brenvik";
    char* m_arguments[2] = {m_name, nullptr};
    QCoreApplication m_application{m_argumentCount, m_arguments};
};
