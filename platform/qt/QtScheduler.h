// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/Scheduler.h"

#include <QObject>

#include <unordered_map>

class QTimer;

/// Timers of Qt's event loop. What is still pending when the scheduler goes never runs.
class QtScheduler final : public QObject, public Scheduler {
public:
    explicit QtScheduler(QObject* parent = nullptr) : QObject(parent) {}

    [[nodiscard]] Timestamp now() const override;
    [[nodiscard]] std::chrono::nanoseconds timeAsleep() const override;
    Task after(std::chrono::nanoseconds delay, std::function<void()> work) override;
    Task every(std::chrono::nanoseconds interval, std::function<void()> work) override;
    void cancel(Task task) override;

private:
    enum class Repeats : bool { no, yes };

    Task start(std::chrono::nanoseconds interval, Repeats repeats, std::function<void()> work);

    std::unordered_map<Task, QTimer*> m_timers;
    Task m_lastTask = 0;
};
