// SPDX-License-Identifier: MIT
#include "core/primitives/Argon2.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <thread>

namespace {

/// What the program gave back to the kernel while it was watched.
struct Returned {
    std::size_t largestMapping = 0;
    std::size_t bytesLeft = 0;  // that are not zero
};

thread_local Returned* watcher = nullptr;

void look(const void* mapping, std::size_t size) {
    const auto* const bytes = static_cast<const std::uint8_t*>(mapping);
    watcher->largestMapping = std::max(watcher->largestMapping, size);
    watcher->bytesLeft += size - static_cast<std::size_t>(std::count(bytes, bytes + size, std::uint8_t{0}));
}

/// Hashes with `lanes` lanes of 40 KiB and a rest that rounding leaves.
Returned returnedByAHash(std::uint32_t lanes, Argon2::Variant variant) {
    Returned returned;
    watcher = &returned;
    static_cast<void>(Argon2::hash({.password = bytesOf("parola"), .salt = bytesOf("tuz ve biber")},
                                   {.memoryKiB = 40 * lanes + 1, .iterations = 2, .parallelism = lanes}, 32, variant));
    watcher = nullptr;
    return returned;
}

}  // namespace

/// Stands before the library's: the last moment at which a mapping can be looked at.
extern "C" int munmap(void* mapping, std::size_t size) noexcept {
    if (watcher)
        look(mapping, size);
    return static_cast<int>(syscall(SYS_munmap, mapping, size));
}

namespace {

TEST(Argon2WipeTest, givesItsWholeWorkingAreaBackInZeros) {
    for (const auto variant : {Argon2::Variant::d, Argon2::Variant::i, Argon2::Variant::id})
        for (const std::uint32_t lanes : {1, 2, 5, 8}) {
            const auto returned = returnedByAHash(lanes, variant);
            EXPECT_GE(returned.largestMapping, std::size_t{40} * 1024 * lanes);
            EXPECT_EQ(returned.bytesLeft, 0U) << lanes;
        }
}

TEST(Argon2WipeTest, givesItBackInZerosAlsoWhenTheHashIsGivenUp) {
    // In the first pass and after it, in the middle of a slice.
    for (const double fraction : {0.05, 0.2, 0.6}) {
        Returned returned;
        Derivation derivation;
        const std::jthread user([&] {
            while (derivation.fraction() < fraction)
                std::this_thread::yield();
            derivation.giveUp();
        });
        watcher = &returned;
        EXPECT_THROW((void)Argon2::hash({.password = bytesOf("parola"), .salt = bytesOf("tuz ve biber")},
                                        {.memoryKiB = 1 << 17, .iterations = 3, .parallelism = 2}, 32,
                                        Argon2::Variant::d, Argon2::currentVersion, &derivation),
                     DerivationGivenUp);
        watcher = nullptr;
        EXPECT_GE(returned.largestMapping, std::size_t{1} << 27);
        EXPECT_EQ(returned.bytesLeft, 0U) << fraction;
    }
}

TEST(Argon2WipeTest, wouldSeeWhatIsLeft) {
    Returned returned;
    auto* const mapping = mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    static_cast<std::uint8_t*>(mapping)[4095] = 1;

    watcher = &returned;
    munmap(mapping, 4096);
    watcher = nullptr;

    EXPECT_EQ(returned.bytesLeft, 1U);
}

}  // namespace
