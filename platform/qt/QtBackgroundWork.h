// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/BackgroundWork.h"

/// A thread for the work, and a turn of Qt's event loop around its end. A loop that is asked to quit meanwhile, as the
/// program's end does, gives the work up. Where no thread can be started the work runs in place.
class QtBackgroundWork final : public BackgroundWork {
public:
    void run(const Task& task) override;
};
