// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

/// What a call ended in that ran in a process of its own.
struct ChildOutcome {
    std::string outcome;         // what the call returned; empty where the process died
    std::int64_t peakMemoryKiB;  // beyond what a process needs that does nothing
};

/// Runs a call in a forked process, so that a crash is a failed test and not the end of all tests, and memory can be
/// measured and bounded.
///
/// @param addressSpaceBytes what the process may map beyond what it has; nothing for no bound.
ChildOutcome inChild(const std::function<std::string()>& call,
                     std::optional<std::uint64_t> addressSpaceBytes = std::nullopt);

/// Whether address space can be bounded: a sanitizer's shadow memory needs all of it.
constexpr bool canBoundAddressSpace() {
#if defined(__SANITIZE_ADDRESS__)
    return false;
#else
    return true;
#endif
}
