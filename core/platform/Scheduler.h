// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/Timestamp.h"

#include <chrono>
#include <cstdint>
#include <functional>

/// Timers and delayed work on the main thread, and the clock that they go by.
class Scheduler {
public:
    using Task = std::uint64_t;  // never 0, never given twice

    virtual ~Scheduler() = default;

    /// The time of day, which the user or the network may set at any moment: for what is stored and shown.
    [[nodiscard]] virtual Timestamp now() const = 0;

    /// The time since some fixed moment, which no clock setting changes: for measuring durations.
    [[nodiscard]] virtual std::chrono::nanoseconds steadyNow() const {
        return std::chrono::steady_clock::now().time_since_epoch();
    }

    /// How long the computer has slept since some fixed moment. The steady clock and all timers stand still meanwhile.
    [[nodiscard]] virtual std::chrono::nanoseconds timeAsleep() const { return {}; }

    /// Runs `work` once, `delay` from now and never within this call.
    virtual Task after(std::chrono::nanoseconds delay, std::function<void()> work) = 0;

    /// Runs `work` again and again, each `interval`, until it is cancelled.
    virtual Task every(std::chrono::nanoseconds interval, std::function<void()> work) = 0;

    /// Forgets a task; one that has run or never was is no fault.
    virtual void cancel(Task task) = 0;
};
