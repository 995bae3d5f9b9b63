// SPDX-License-Identifier: MIT
#include "core/model/UUIDSet.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace {

UUID idOf(std::uint8_t number) {
    std::array<std::uint8_t, 16> bytes{};
    bytes.back() = number;
    return UUID::fromKdbxBytes(bytes).value();
}

TEST(UUIDSetTest, isEmptyAtFirst) {
    UUIDSet set;
    EXPECT_TRUE(set.empty());
    EXPECT_EQ(set.size(), 0u);
    EXPECT_FALSE(set.contains(idOf(0)));
    EXPECT_FALSE(set.contains(idOf(1)));
    EXPECT_FALSE(set.erase(idOf(1)));
    EXPECT_EQ(set, UUIDSet());
}

TEST(UUIDSetTest, isFilledFromAList) {
    const UUIDSet set{idOf(0), idOf(1), idOf(1), idOf(2)};
    EXPECT_EQ(set.size(), 3u);
    EXPECT_TRUE(set.contains(idOf(0)));
    EXPECT_TRUE(set.contains(idOf(2)));
    EXPECT_FALSE(set.contains(idOf(3)));
}

TEST(UUIDSetTest, equalsASetOfTheSameIdentifiers) {
    UUIDSet grown;
    grown.reserve(1'000);
    for (const std::uint8_t number : {3, 2, 0, 1})
        grown.insert(idOf(number));
    EXPECT_EQ(grown, (UUIDSet{idOf(0), idOf(1), idOf(2), idOf(3)}));
    EXPECT_NE(grown, (UUIDSet{idOf(4), idOf(1), idOf(2), idOf(3)}));
    EXPECT_NE(grown, (UUIDSet{idOf(0), idOf(1), idOf(2), idOf(4)}));
    EXPECT_NE(grown, (UUIDSet{idOf(0), idOf(1), idOf(2)}));
}

// Few identifiers come and go often, so that they stand in each other's slots.
TEST(UUIDSetTest, behavesAsASetWhateverIsDoneToIt) {
    for (unsigned seed = 0; seed < 50; ++seed) {
        std::mt19937 random(seed);
        const auto kinds = 1 + random() % 200;
        UUIDSet set;
        std::set<UUID> plain;
        for (int step = 0; step < 2'000; ++step) {
            const auto id = idOf(static_cast<std::uint8_t>(random() % kinds));
            if (random() % 2 == 0)
                ASSERT_EQ(set.insert(id), plain.insert(id).second);
            else
                ASSERT_EQ(set.erase(id), plain.erase(id) > 0);
            ASSERT_EQ(set.size(), plain.size());
            for (const std::uint8_t number : {0, 1, 7, 50, 199})
                ASSERT_EQ(set.contains(idOf(number)), plain.contains(idOf(number)));
        }
        EXPECT_EQ(set, UUIDSet(plain.begin(), plain.end(), plain.size()));
    }
}

TEST(UUIDSetTest, holdsAHundredThousand) {
    std::vector<UUID> ids;
    UUIDSet set;
    for (int i = 0; i < 100'000; ++i)
        EXPECT_TRUE(set.insert(ids.emplace_back(UUID::random())));
    EXPECT_EQ(set.size(), ids.size());
    for (const auto& id : ids)
        EXPECT_TRUE(set.contains(id));
    EXPECT_FALSE(set.contains(UUID::random()));
}

}  // namespace
