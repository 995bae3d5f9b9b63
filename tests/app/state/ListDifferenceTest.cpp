// SPDX-License-Identifier: MIT
#include "app/state/ListDifference.h"

#include "core/model/SharedArray.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<ListChange> changes(const auto& former, const auto& present) {
    std::vector<ListChange> all;
    ListDifference difference(former, present, std::equal_to());
    while (const auto change = difference.next())
        all.push_back(*change);
    return all;
}

std::vector<ListChange> changesOfTexts(const std::string& former, const std::string& present) {
    return changes(former, present);
}

std::vector<int> numbers(int count) {
    std::vector<int> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

/// The former list, changed as the difference says.
std::vector<int> changed(const std::vector<int>& former, const std::vector<int>& present) {
    std::vector<int> result;
    std::size_t kept = 0;
    for (const auto& change : changes(former, present)) {
        for (; kept < change.before; ++kept)
            result.push_back(former[kept]);
        EXPECT_EQ(result.size(), change.after);
        for (std::size_t i = 0; i < change.added; ++i)
            result.push_back(present[change.after + i]);
        kept += change.removed;
    }
    result.insert(result.end(), former.begin() + static_cast<std::ptrdiff_t>(kept), former.end());
    return result;
}

TEST(ListDifferenceTest, hasNoChangesBetweenEqualLists) {
    EXPECT_THAT(changesOfTexts("abc", "abc"), IsEmpty());
    EXPECT_THAT(changesOfTexts("", ""), IsEmpty());
}

TEST(ListDifferenceTest, saysWhereItemsHaveGone) {
    EXPECT_THAT(changesOfTexts("abcdef", "acf"), ElementsAre(ListChange{1, 1, 1, 0}, ListChange{3, 2, 2, 0}));
}

TEST(ListDifferenceTest, saysWhereItemsHaveCome) {
    EXPECT_THAT(changesOfTexts("acf", "abcdef"), ElementsAre(ListChange{1, 0, 1, 1}, ListChange{2, 0, 3, 2}));
}

TEST(ListDifferenceTest, saysWhatHasGoneOrComeAtTheEnd) {
    EXPECT_THAT(changesOfTexts("abc", "a"), ElementsAre(ListChange{1, 2, 1, 0}));
    EXPECT_THAT(changesOfTexts("a", "abc"), ElementsAre(ListChange{1, 0, 1, 2}));
    EXPECT_THAT(changesOfTexts("", "ab"), ElementsAre(ListChange{0, 0, 0, 2}));
}

TEST(ListDifferenceTest, saysThatAnItemWasReplaced) {
    EXPECT_THAT(changesOfTexts("abc", "axc"), ElementsAre(ListChange{1, 1, 1, 1}));
}

TEST(ListDifferenceTest, saysOfAnItemThatMovesThatItWentAndCame) {
    EXPECT_THAT(changesOfTexts("xabc", "abcx"), ElementsAre(ListChange{0, 1, 0, 0}, ListChange{4, 0, 3, 1}));
    EXPECT_THAT(changesOfTexts("abcx", "xabc"), ElementsAre(ListChange{0, 0, 0, 1}, ListChange{3, 1, 4, 0}));
}

TEST(ListDifferenceTest, findsWhereAPartGoesOnHoweverFarThatIs) {
    const auto all = numbers(10'000);
    const std::vector<int> part{0, 7'000, 9'999};
    EXPECT_THAT(changes(all, part), ElementsAre(ListChange{1, 6'999, 1, 0}, ListChange{7'001, 2'998, 2, 0}));
    EXPECT_THAT(changes(part, all), ElementsAre(ListChange{1, 0, 1, 6'999}, ListChange{2, 0, 7'001, 2'998}));
}

TEST(ListDifferenceTest, comparesLittleBeyondWhatItWasAskedFor) {
    const auto former = numbers(100'000);
    auto present = former;
    for (auto& number : present)
        number += 100'000;
    int compared = 0;
    ListDifference difference(former, present, [&](int a, int b) { return ++compared, a == b; });
    for (int change = 0; change < 3; ++change)
        EXPECT_TRUE(difference.next().has_value());
    EXPECT_LT(compared, 1'000);
}

TEST(ListDifferenceTest, looksFarOnceOnlyWhereAListIsNoPartOfTheOther) {
    const auto former = numbers(100'000);
    const std::vector<int> present(100, -1);
    int compared = 0;
    ListDifference difference(former, present, [&](int a, int b) { return ++compared, a == b; });
    for (int change = 0; change < 50; ++change)
        EXPECT_TRUE(difference.next().has_value());
    EXPECT_LT(compared, 110'000);
}

TEST(ListDifferenceTest, comparesItemsAsItIsAsked) {
    const std::vector<std::string> former{"bir", "iki"};
    const std::vector<std::string> present{"var", "yedi", "on"};
    ListDifference difference(former, present, [](const auto& a, const auto& b) { return a.back() == b.back(); });
    EXPECT_EQ(difference.next(), (ListChange{2, 0, 2, 1}));
    EXPECT_EQ(difference.next(), std::nullopt);
}

TEST(ListDifferenceTest, leadsFromEachListToTheOther) {
    std::mt19937 random(11);
    for (int round = 0; round < 500; ++round) {
        auto former = numbers(static_cast<int>(random() % 300));
        auto present = former;
        for (auto steps = random() % 6; steps > 0 && !present.empty(); --steps) {
            const auto first = present.begin() + static_cast<std::ptrdiff_t>(random() % present.size());
            const auto last = first + std::min<std::ptrdiff_t>(random() % 100, present.end() - first);
            if (random() % 2 == 0)
                present.erase(first, last);
            else
                std::shuffle(first, last, random);
        }
        EXPECT_EQ(changed(former, present), present);
        EXPECT_EQ(changed(present, former), former);
    }
}

TEST(ListDifferenceTest, ofSharedArraysComparesWhatIsSharedByItsAddress) {
    SharedArray<std::string> former{"a", "b", "c"};
    auto present = former;
    present.mutableAt(1) = "b";
    present.append("d");
    ListDifference difference(former, present, [](const auto& a, const auto& b) { return &a == &b; });
    EXPECT_EQ(difference.next(), (ListChange{1, 1, 1, 1}));
    EXPECT_EQ(difference.next(), (ListChange{3, 0, 3, 1}));
    EXPECT_EQ(difference.next(), std::nullopt);
}

}  // namespace
