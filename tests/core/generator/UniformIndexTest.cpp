// SPDX-License-Identifier: MIT
#include "core/generator/UniformIndex.h"
#include "tests/core/generator/ChosenRandom.h"

#include <set>

TEST(UniformIndexTest, leavesTheSourceAloneWhenThereIsOneIndex) {
    ChosenRandom random{};

    EXPECT_EQ(uniformIndex(1, std::ref(random)), 0u);
}

TEST(UniformIndexTest, isTheValueModuloTheCount) {
    ChosenRandom random{0, 25, 26, 1000};

    EXPECT_EQ(uniformIndex(26, std::ref(random)), 0u);
    EXPECT_EQ(uniformIndex(26, std::ref(random)), 25u);
    EXPECT_EQ(uniformIndex(26, std::ref(random)), 0u);
    EXPECT_EQ(uniformIndex(26, std::ref(random)), 1000u % 26);
}

struct Bound {
    std::uint32_t count;
    std::uint32_t limit;
};

class UniformIndexBoundTest : public testing::TestWithParam<Bound> {};

TEST_P(UniformIndexBoundTest, keepsTheLimitItself) {
    const auto [count, limit] = GetParam();
    ChosenRandom random{limit};

    EXPECT_EQ(uniformIndex(count, std::ref(random)), limit % count);
}

TEST_P(UniformIndexBoundTest, skipsEachValueAboveTheLimit) {
    const auto [count, limit] = GetParam();
    ChosenRandom random{0xFFFFFFFF, limit + 1, 1};

    EXPECT_EQ(uniformIndex(count, std::ref(random)), 1u);
    EXPECT_TRUE(random.isUsedUp());
}

// The limits, worked out by hand: 0xFFFFFFFF / n, truncated, times n, less n - 1.
INSTANTIATE_TEST_SUITE_P(UniformIndexTest, UniformIndexBoundTest,
                         testing::Values(Bound{2, 4294967293}, Bound{3, 4294967293}, Bound{8, 4294967281},
                                         Bound{10, 4294967281}, Bound{26, 4294967249}, Bound{28, 4294967265},
                                         Bound{90, 4294967131}, Bound{0x80000000, 1}, Bound{0xFFFFFFFF, 1}));

TEST(SystemRandomTest, givesNewValues) {
    std::set<std::uint32_t> values;
    for (int i = 0; i < 64; ++i)
        values.insert(systemRandom());

    EXPECT_GT(values.size(), 60u);
}
