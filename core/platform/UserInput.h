// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

/// What is known of the user's hands.
class UserInput {
public:
    virtual ~UserInput() = default;

    /// The time since the last key or the last move of the pointer, in any program as far as the desktop says so. The
    /// computer's sleep is no part of it.
    [[nodiscard]] virtual std::chrono::nanoseconds idleTime() const = 0;
};
