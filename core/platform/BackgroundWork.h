// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>

/// Runs long work while the program goes on.
class BackgroundWork {
public:
    /// What becomes of the work when the program is asked to end meanwhile.
    enum class AtEnd : std::uint8_t {
        givesUp,   // at once
        finishes,  // it is waited for some seconds first
    };

    struct Task {
        std::function<void()> work;    // may run on another thread
        std::function<void()> giveUp;  // lets the work end soon; called while it runs
        AtEnd atEnd = AtEnd::givesUp;
    };

    virtual ~BackgroundWork() = default;

    /// Returns when the work has ended. Until then the main thread, whose call this is, answers whatever comes: timers,
    /// input and calls of other programs. What the work throws is thrown from here.
    virtual void run(const Task& task) = 0;
};
