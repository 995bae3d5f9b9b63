// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

/// Work beside the main thread, one piece after the other in the order of asking.
class WorkQueue {
public:
    virtual ~WorkQueue() = default;

    /// Runs `work` soon. It throws nothing, and touches nothing that the main thread changes meanwhile.
    virtual void start(std::function<void()> work) = 0;

    /// Returns once all that was started has ended, and nothing of it is left in memory.
    virtual void finish() = 0;
};
