// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/WorkQueue.h"

#include <deque>
#include <mutex>
#include <thread>

/// A thread that lives as long as there is work. Where none can be made, the caller's does the work.
class WorkThread final : public WorkQueue {
public:
    ~WorkThread() override { finish(); }

    void start(std::function<void()> work) override;
    void finish() override;

private:
    void run();

    std::mutex m_mutex;  // of the two below
    std::deque<std::function<void()>> m_waiting;
    bool m_isRunning = false;
    std::thread m_thread;
};
