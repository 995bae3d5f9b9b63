// SPDX-License-Identifier: MIT
#include "core/primitives/Random.h"

#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/random.h>
#include <sys/syscall.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <set>

namespace {

TEST(RandomTest, givesAsManyBytesAsAreAskedFor) {
    for (const std::size_t size : {0, 1, 16, 255, 256, 257, 5000})
        EXPECT_EQ(randomBytes(size).size(), size);
}

TEST(RandomTest, neverGivesTheSameAgain) {
    std::set<Bytes> seen;
    for (int i = 0; i < 1000; ++i)
        EXPECT_TRUE(seen.insert(randomBytes(16)).second);
}

TEST(RandomTest, fillsAllOfTheBufferAndNothingBesideIt) {
    std::array<std::uint8_t, 48> changed{};
    std::array<std::uint8_t, 64> buffer{};
    for (int i = 0; i < 32; ++i) {
        fillRandom(std::span(buffer).subspan(8, 48));
        for (std::size_t place = 0; place < changed.size(); ++place)
            changed[place] |= buffer[8 + place];
    }

    for (const auto byte : changed)
        EXPECT_NE(byte, 0);
    for (std::size_t place = 0; place < 8; ++place)
        EXPECT_EQ(buffer[place] | buffer[56 + place], 0);
}

// A single call of the kernel gives less than 32 MiB (getrandom(2)).
TEST(RandomTest, fillsBuffersThatTheKernelFillsInParts) {
    std::vector<std::uint8_t> bytes((std::size_t{33} << 20) + 5, 0);

    fillRandom(bytes);

    const auto* const end = bytes.data() + bytes.size();
    EXPECT_TRUE(std::any_of(end - 16, end, [](auto byte) { return byte != 0; }));
    EXPECT_TRUE(std::any_of(end - (1 << 20), end - (1 << 20) + 16, [](auto byte) { return byte != 0; }));
}

TEST(RandomTest, usesEveryValueOfAByteAboutAsOften) {
    std::array<int, 256> counts{};
    for (const auto byte : randomBytes(256 * 1000))
        ++counts[byte];

    for (const auto count : counts) {  // nine standard deviations
        EXPECT_GT(count, 715);
        EXPECT_LT(count, 1285);
    }
}

/// From here on this process's kernel has no getrandom.
void refuseGetrandom() {
    sock_filter filter[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_getrandom, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{4, filter};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        std::exit(1);
}

TEST(RandomDeathTest, theRuntimesSourceServesWhereTheKernelCannot) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto drawn = [] {
        refuseGetrandom();
        std::uint8_t probe = 0;
        const bool refused = getrandom(&probe, 1, 0) < 0;
        const auto bytes = randomBytes(64);
        std::exit(refused && bytes != Bytes(64, 0) && bytes != randomBytes(64) ? 0 : 2);
    };
    EXPECT_EXIT(drawn(), testing::ExitedWithCode(0), "");
}

}  // namespace
