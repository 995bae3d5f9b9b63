// SPDX-License-Identifier: MIT
#include "platform/qt/QtScheduler.h"

#include <QTimer>

#include <time.h>

#include <algorithm>
#include <limits>

namespace {

/// Rounded up, so that nothing runs early; a timer counts milliseconds in an int.
int milliseconds(std::chrono::nanoseconds duration) {
    const auto count = std::chrono::ceil<std::chrono::milliseconds>(duration).count();
    return static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(count, 0, std::numeric_limits<int>::max()));
}

std::chrono::nanoseconds clockTime(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace

Timestamp QtScheduler::now() const {
    return Timestamp::now();
}

std::chrono::nanoseconds QtScheduler::timeAsleep() const {
    return clockTime(CLOCK_BOOTTIME) - clockTime(CLOCK_MONOTONIC);
}

Scheduler::Task QtScheduler::after(std::chrono::nanoseconds delay, std::function<void()> work) {
    return start(delay, Repeats::no, std::move(work));
}

Scheduler::Task QtScheduler::every(std::chrono::nanoseconds interval, std::function<void()> work) {
    return start(interval, Repeats::yes, std::move(work));
}

void QtScheduler::cancel(Task task) {
    const auto found = m_timers.find(task);
    if (found == m_timers.end())
        return;
    found->second->stop();
    found->second->deleteLater();  // it may be the one whose work is running
    m_timers.erase(found);
}

Scheduler::Task QtScheduler::start(std::chrono::nanoseconds interval, Repeats repeats, std::function<void()> work) {
    const auto task = ++m_lastTask;
    auto* timer = new QTimer(this);
    timer->setTimerType(Qt::PreciseTimer);
    timer->setSingleShot(repeats == Repeats::no);
    timer->setInterval(milliseconds(interval));
    connect(timer, &QTimer::timeout, this, [this, task, repeats, work = std::move(work)] {
        if (repeats == Repeats::no)
            cancel(task);
        work();
    });
    m_timers.emplace(task, timer);
    timer->start();
    return task;
}
