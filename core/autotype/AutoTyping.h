// SPDX-License-Identifier: MIT
#pragma once

#include "core/autotype/AutoTypeAction.h"

#include <exception>
#include <functional>
#include <vector>

/// Typing into the application that was in front, as far as a caller needs it.
class AutoTyping {
public:
    using Done = std::function<void(std::exception_ptr failure)>;  // null where there was none

    virtual ~AutoTyping() = default;

    /// Performs the actions in their order in the application that is the target now. The call returns before the first
    /// one; `done` is called at the end. What was typed before a failure stays typed.
    virtual void perform(std::vector<AutoTypeAction> actions, Done done) = 0;

    /// Ends all runs at once, those too that wait for their turn. No key is struck after this call and none stays down.
    /// The actions are gone, and what was remembered of them. No `done` is called.
    virtual void stop() = 0;
};
