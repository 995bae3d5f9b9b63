// SPDX-License-Identifier: MIT
#include "platform/posix/UnusedMemory.h"
#include "tests/support/MemoryScan.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <fstream>

namespace {

std::size_t residentBytes() {
    std::ifstream statistics("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    statistics >> total >> resident;
    return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

/// The last byte that was written, far below the caller's frame.
[[gnu::noinline]] std::uint8_t leaveOnTheStack(const MaskedSecret& secret) {
    volatile std::uint8_t frame[200'000];
    for (std::size_t i = 0; i < secret.size(); ++i)
        frame[1000 + i] = secret.at(i);
    return frame[1000 + secret.size() - 1];
}

TEST(UnusedMemoryTest, freeMemoryGoesBackToTheSystemFromBelowWhatIsUsed) {
    if (!BRENVIK_MEMORY_IS_SCANNABLE)
        GTEST_SKIP() << "the sanitizer keeps what is freed";
    constexpr std::size_t size = 1000;
    constexpr std::size_t count = 50'000;
    std::vector<void*> blocks;
    for (std::size_t i = 0; i < count; ++i)
        blocks.push_back(std::memset(std::malloc(size), 1, size));
    void* const used = std::malloc(size);
    for (auto* const block : blocks)
        std::free(block);
    const auto before = residentBytes();

    UnusedMemory::giveBack();

    EXPECT_LT(residentBytes() + size * count * 9 / 10, before);
    std::free(used);
}

TEST(UnusedMemoryTest, endedCallsLeaveNothingOnTheStack) {
    if (!BRENVIK_MEMORY_IS_SCANNABLE)
        GTEST_SKIP() << "the sanitizer keeps what is freed";
    const auto secret = MaskedSecret::text();
    MemoryScan memory;
    EXPECT_EQ(leaveOnTheStack(secret), secret.at(secret.size() - 1));
    EXPECT_EQ(memory.occurrences(secret), 1);

    UnusedMemory::giveBack();

    EXPECT_EQ(memory.occurrences(secret), 0);
}

}  // namespace
