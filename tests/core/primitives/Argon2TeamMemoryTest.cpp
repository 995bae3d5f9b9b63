// SPDX-License-Identifier: MIT
#include "core/primitives/Argon2Team.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <optional>

namespace {

/// How many more allocations this thread is granted; no limit where it is none.
thread_local std::optional<int> granted;

void* take(std::size_t size) {
    if (granted && (*granted)-- <= 0)
        throw std::bad_alloc();
    if (auto* const memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) {
    return take(size);
}
void* operator new(std::size_t size, std::align_val_t) {
    return take(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    std::free(memory);
}

namespace {

struct Outcome {
    bool isRefused = false;
    std::uint32_t lanesServed = 0;
};

Outcome shareWith(int allocations) {
    std::atomic<std::uint32_t> served = 0;
    const std::function<void(Argon2::LaneRange, const std::function<void()>&)> work =
        [&](Argon2::LaneRange range, const std::function<void()>& meet) {
            meet();
            served += range.count;
        };
    granted = allocations;
    try {
        Argon2::shareLanes(8, work);
    } catch (const std::bad_alloc&) {
        granted.reset();
        return {.isRefused = true, .lanesServed = served};
    }
    granted.reset();
    return {.lanesServed = served};
}

TEST(Argon2TeamMemoryTest, servesAllLanesOrNoneWhereverMemoryRunsOutAndWaitsForNone) {
    bool hasRefused = false;
    for (int allocations = 0;; ++allocations) {
        const auto outcome = shareWith(allocations);
        EXPECT_EQ(outcome.lanesServed, outcome.isRefused ? 0U : 8U) << allocations;
        hasRefused = hasRefused || outcome.isRefused;
        if (!outcome.isRefused && allocations > 20)
            break;
    }
    EXPECT_TRUE(hasRefused);
}

}  // namespace
