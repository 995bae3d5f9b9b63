// SPDX-License-Identifier: MIT
#include "app/state/EntryOrder.h"

#include "tests/support/Entries.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <random>

namespace {

using testing::ElementsAre;
using Column = EntrySort::Column;

constexpr EntrySort byTitle{.column = Column::title, .ascending = true};

TEST(EntryOrderTest, followsEntriesThatComeChangeAndGo) {
    EntryOrder order;
    KdbxGroup group;
    group.entries = {entryTitled("Posta"), entryTitled("Banka"), entryTitled("Zil")};
    EXPECT_THAT(titlesOf(order.sorted(group, entriesOf(group), byTitle)), ElementsAre("Banka", "Posta", "Zil"));
    group.entries.append(entryTitled("Kargo"));
    EXPECT_THAT(titlesOf(order.sorted(group, entriesOf(group), byTitle)),
                ElementsAre("Banka", "Kargo", "Posta", "Zil"));
    group.entries.mutableAt(0).title = "Zeytin";
    EXPECT_THAT(titlesOf(order.sorted(group, entriesOf(group), byTitle)),
                ElementsAre("Banka", "Kargo", "Zeytin", "Zil"));
    group.entries.removeAt(1);
    EXPECT_FALSE(order.isFarFrom(entriesOf(group), byTitle));
    EXPECT_THAT(titlesOf(order.sorted(group, entriesOf(group), byTitle)), ElementsAre("Kargo", "Zeytin", "Zil"));
}

TEST(EntryOrderTest, isFarFromAnotherListAndAnotherColumnButNotFromTheOtherDirection) {
    EntryOrder order;
    KdbxGroup group;
    for (int number = 0; number < 200; ++number)
        group.entries.append(entryTitled(std::to_string(number)));
    EXPECT_TRUE(order.isFarFrom(entriesOf(group), byTitle));
    static_cast<void>(order.sorted(group, entriesOf(group), byTitle));
    EXPECT_FALSE(order.isFarFrom(entriesOf(group), {.column = Column::title, .ascending = false}));
    EXPECT_TRUE(order.isFarFrom(entriesOf(group), {.column = Column::url, .ascending = true}));
    const KdbxGroup other{.entries = std::vector(200, entryTitled("x"))};
    EXPECT_TRUE(order.isFarFrom(entriesOf(other), byTitle));
    order.forget();
    EXPECT_TRUE(order.isFarFrom(entriesOf(group), byTitle));
}

/// A group that changes at random, few entries or many at a time.
class ChangingGroup {
public:
    explicit ChangingGroup(unsigned seed) : m_random(seed) {
        for (auto count = below(300); count > 0; --count)
            group.entries.append(entry());
    }

    void change() {
        for (auto count = below(10) == 0 ? below(120) : below(4); count > 0; --count)
            changeOne();
        if (below(12) == 0)
            shuffle();
    }
    EntryReferences someOf(const EntryReferences& entries) {
        EntryReferences some;
        const auto sparseness = below(6) + 1;
        for (const auto* entry : entries)
            if (below(sparseness) == 0)
                some.push_back(entry);
        return some;
    }
    std::size_t below(std::size_t end) { return m_random() % end; }

    KdbxGroup group;

private:
    KdbxEntry entry() {
        auto entry = entryTitled(std::string(below(3), 'a') + static_cast<char>('a' + below(5)));
        entry.modified = Timestamp{static_cast<double>(below(9))};
        entry.url = std::to_string(below(40));
        return entry;
    }
    void changeOne() {
        auto& entries = group.entries;
        const auto kind = below(3);
        if (entries.empty() || kind == 0)
            entries.insert(below(entries.size() + 1), entry());
        else if (kind == 1)
            entries.removeAt(below(entries.size()));
        else
            entries.mutableAt(below(entries.size())) = entry();
    }
    void shuffle() {
        std::vector<std::size_t> order(group.entries.size());
        std::iota(order.begin(), order.end(), 0U);
        for (auto count = below(4); count > 0 && !order.empty(); --count)
            std::swap(order[below(order.size())], order[below(order.size())]);
        group.entries.rearrange(order);
    }

    std::mt19937 m_random;
};

EntryReferences entriesAt(const std::vector<std::size_t>& indices, const EntryReferences& entries) {
    EntryReferences chosen;
    for (const auto index : indices)
        chosen.push_back(entries[index]);
    return chosen;
}

TEST(EntryOrderTest, takesOverWhatAnotherOneKnows) {
    KdbxGroup group;
    for (int number = 0; number < 200; ++number)
        group.entries.append(entryTitled(std::to_string(number % 7)));
    EntryOrder known;
    static_cast<void>(known.sorted(group, entriesOf(group), byTitle));
    EntryOrder order;
    order.takeOver(known);
    EXPECT_FALSE(order.isFarFrom(entriesOf(group), byTitle));
    known.forget();
    group.entries.mutableAt(3).title = "x";
    EXPECT_EQ(order.sorted(group, entriesOf(group), byTitle), byTitle.apply(entriesOf(group)));
}

TEST(EntryOrderTest, givesWhatSortingAnewGives) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        ChangingGroup changing(seed);
        EntryOrder order;
        for (int step = 0; step < 60; ++step) {
            const auto entries = entriesOf(changing.group);
            const auto part = changing.someOf(entries);
            const EntrySort sort{.column = EntrySort::allCases[changing.below(12) == 0 ? changing.below(5) : 1],
                                 .ascending = changing.below(4) != 0};
            ASSERT_EQ(order.sorted(changing.group, entries, sort), sort.apply(entries)) << seed << ' ' << step;
            ASSERT_EQ(order.sortedPart(changing.group, entries, part, sort), sort.apply(part)) << seed << ' ' << step;
            ASSERT_EQ(entriesAt(order.sortedIndices(changing.group, entries, sort), entries), sort.apply(entries))
                << seed << ' ' << step;
            changing.change();
        }
    }
}

}  // namespace
