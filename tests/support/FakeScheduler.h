// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/Scheduler.h"

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <utility>

/// A clock that tests move by hand. It starts at 2024-01-01T00:00:00Z.
class FakeScheduler final : public Scheduler {
public:
    using Duration = std::chrono::nanoseconds;

    [[nodiscard]] Timestamp now() const override {
        return {1'704'067'200 + std::chrono::duration<double>(m_elapsed + m_setBy).count()};
    }

    [[nodiscard]] Duration steadyNow() const override { return m_elapsed; }

    [[nodiscard]] Duration timeAsleep() const override { return m_asleep; }

    /// The computer sleeps: the time of day goes on alone.
    void sleep(Duration duration) {
        m_asleep += duration;
        m_setBy += duration;
    }

    /// The user sets the time of day, ahead or back. Nothing that waits waits longer or shorter for that.
    void setTimeOfDay(Duration by) { m_setBy += by; }

    Task after(Duration delay, std::function<void()> work) override { return add(delay, {}, std::move(work)); }

    Task every(Duration interval, std::function<void()> work) override {
        return add(interval, interval, std::move(work));
    }

    void cancel(Task task) override { m_waiting.erase(task); }

    /// Moves the clock and runs what falls due, in the order of due time and then of asking: what falls due at the very
    /// end too, and what such work asks for in turn. The clock shows the due time while work runs.
    void advance(Duration duration) {
        const Duration end = m_elapsed + duration;
        while (const auto task = nextUntil(end))
            run(*task);
        m_elapsed = end;
    }

    /// Forgets all that waits, as the end of a program does.
    void forgetAll() { m_waiting.clear(); }

    /// How many tasks wait, repeating ones included.
    [[nodiscard]] std::size_t waitingCount() const { return m_waiting.size(); }

private:
    struct Waiting {
        Duration due;
        std::optional<Duration> interval;  // none for what runs once
        std::function<void()> work;
    };

    Task add(Duration delay, std::optional<Duration> interval, std::function<void()> work) {
        m_waiting[++m_lastTask] = {
            .due = m_elapsed + std::max(delay, Duration::zero()), .interval = interval, .work = std::move(work)};
        return m_lastTask;
    }

    [[nodiscard]] std::optional<Task> nextUntil(Duration end) const {
        std::optional<Task> next;
        for (const auto& [task, waiting] : m_waiting)
            if (waiting.due <= end && (!next || waiting.due < m_waiting.at(*next).due))
                next = task;
        return next;
    }

    void run(Task task) {
        auto& waiting = m_waiting.at(task);
        m_elapsed = std::max(m_elapsed, waiting.due);
        const auto work = waiting.work;  // a copy: the work may cancel its own task
        if (waiting.interval)
            waiting.due += *waiting.interval;
        else
            m_waiting.erase(task);
        work();
    }

    Duration m_elapsed{};
    Duration m_setBy{};
    Duration m_asleep{};
    std::map<Task, Waiting> m_waiting;  // in the order of asking
    Task m_lastTask = 0;
};
