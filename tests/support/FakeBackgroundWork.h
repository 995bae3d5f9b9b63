// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/BackgroundWork.h"

#include <utility>

/// Work that runs in place. What happens in the program meanwhile is what a test says, once.
class FakeBackgroundWork final : public BackgroundWork {
public:
    std::function<void(const Task& task)> meanwhile;
    int runs = 0;

    void run(const Task& task) override {
        ++runs;
        if (const auto happens = std::exchange(meanwhile, nullptr))
            happens(task);
        task.work();
    }
};
