// SPDX-License-Identifier: MIT
#pragma once

/// Stops the process when a caller inside the program broke its word. Never reachable with user data:
/// each use says why. It stays in every build, since what it guards would be worse than an end.
#define precondition(condition) \
    ((condition) ? static_cast<void>(0) : preconditionFailed(#condition, __FILE__, __LINE__))

[[noreturn]] void preconditionFailed(const char* condition, const char* file, int line) noexcept;
