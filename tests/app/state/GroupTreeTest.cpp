// SPDX-License-Identifier: MIT
#include "app/state/GroupTree.h"

#include "tests/support/Entries.h"
#include "tests/support/Sharing.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <random>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool countsAllocations = false;
#else
constexpr bool countsAllocations = true;
#endif

/// An identifier that a reader can tell from another.
UUID idOf(std::uint8_t number) {
    std::array<std::uint8_t, 16> bytes{};
    bytes[15] = number;
    return *UUID::fromKdbxBytes(bytes);
}

const auto unknownID = idOf(0xFF);

KdbxEntry entry(std::uint8_t id, std::string title) {
    return {.id = idOf(id), .title = std::move(title), .created = {1}};
}

std::vector<std::string> namesOf(const std::vector<KdbxGroup>& groups) {
    std::vector<std::string> names;
    for (const auto& group : groups)
        names.push_back(group.name);
    return names;
}

using Titles = std::vector<std::string>;

/// root [a] ── left [b c, history of c: h] ── deep [d]
///          └─ right [e]
KdbxGroup tree() {
    auto c = entry(0xC, "c");
    c.historyItems.append(entry(0x99, "h"));
    const KdbxGroup deep{.id = idOf(3), .name = "deep", .entries = {entry(0xD, "d")}};
    const KdbxGroup left{.id = idOf(2), .name = "left", .groups = {deep}, .entries = {entry(0xB, "b"), c}};
    const KdbxGroup right{.id = idOf(4), .name = "right", .entries = {entry(0xE, "e")}};
    return {.id = idOf(1), .name = "root", .groups = {left, right}, .entries = {entry(0xA, "a")}};
}

/// What two trees of one shape do not share.
struct Unshared {
    int groups = 0;
    int entries = 0;
    bool operator==(const Unshared&) const = default;
};

Unshared unshared(const KdbxGroup& a, const KdbxGroup& b) {
    Unshared count;
    for (std::size_t i = 0; i < a.entries.size(); ++i)
        count.entries += shareElement(a.entries, b.entries, i) ? 0 : 1;
    for (std::size_t i = 0; i < a.groups.size(); ++i) {
        if (shareElement(a.groups, b.groups, i))
            continue;
        const auto inside = unshared(a.groups[i], b.groups[i]);
        count.groups += inside.groups + 1;
        count.entries += inside.entries;
    }
    return count;
}

/// Ten groups of ten groups of a thousand entries.
KdbxGroup largeTree() {
    KdbxGroup root;
    for (int i = 0; i < 10; ++i) {
        KdbxGroup outer;
        for (int j = 0; j < 10; ++j) {
            KdbxGroup inner;
            for (int k = 0; k < 1'000; ++k)
                inner.entries.append({.created = {1}});
            outer.groups.append(std::move(inner));
        }
        root.groups.append(std::move(outer));
    }
    return root;
}

TEST(GroupTreeTest, findsEveryGroupTheRootIncluded) {
    const auto root = tree();
    EXPECT_EQ(GroupTree::groupWithID(root, idOf(1))->name, "root");
    EXPECT_EQ(GroupTree::groupWithID(root, idOf(3))->name, "deep");
    EXPECT_EQ(GroupTree::groupWithID(root, idOf(4))->name, "right");
    EXPECT_EQ(GroupTree::findGroup(root, idOf(3)), &root.groups[0].groups[0]);
}

TEST(GroupTreeTest, findsEveryEntryButNoHistoryItem) {
    const auto root = tree();
    EXPECT_EQ(GroupTree::entryWithID(root, idOf(0xA))->title, "a");
    EXPECT_EQ(GroupTree::entryWithID(root, idOf(0xD))->title, "d");
    EXPECT_EQ(GroupTree::entryWithID(root, idOf(0xE))->title, "e");
    EXPECT_EQ(GroupTree::entryWithID(root, idOf(0x99)), std::nullopt);
    EXPECT_EQ(GroupTree::findEntry(root, idOf(0xA)), &root.entries[0]);
}

TEST(GroupTreeTest, findsTheGroupThatDirectlyHoldsAnEntry) {
    const auto root = tree();
    EXPECT_EQ(GroupTree::groupContainingEntry(root, idOf(0xA))->name, "root");
    EXPECT_EQ(GroupTree::groupContainingEntry(root, idOf(0xC))->name, "left");
    EXPECT_EQ(GroupTree::groupContainingEntry(root, idOf(0xD))->name, "deep");
    EXPECT_EQ(GroupTree::groupContainingEntry(root, idOf(0x99)), std::nullopt);
}

TEST(GroupTreeTest, findsTheParentOfEveryGroupButTheRoot) {
    const auto root = tree();
    EXPECT_EQ(GroupTree::parentOfGroup(root, idOf(2))->name, "root");
    EXPECT_EQ(GroupTree::parentOfGroup(root, idOf(3))->name, "left");
    EXPECT_EQ(GroupTree::parentOfGroup(root, idOf(1)), std::nullopt);
}

TEST(GroupTreeTest, pathHoldsBothEndsAndWhatLiesBetween) {
    EXPECT_EQ(namesOf(*GroupTree::pathToGroup(tree(), idOf(3))), (std::vector<std::string>{"root", "left", "deep"}));
    EXPECT_EQ(namesOf(*GroupTree::pathToGroup(tree(), idOf(4))), (std::vector<std::string>{"root", "right"}));
}

TEST(GroupTreeTest, pathToTheRootIsTheRootAlone) {
    EXPECT_EQ(namesOf(*GroupTree::pathToGroup(tree(), idOf(1))), std::vector<std::string>{"root"});
}

TEST(GroupTreeTest, findsNothingForAnUnknownIdentifier) {
    const auto root = tree();
    EXPECT_EQ(GroupTree::pathToGroup(root, unknownID), std::nullopt);
    EXPECT_EQ(GroupTree::groupWithID(root, unknownID), std::nullopt);
    EXPECT_EQ(GroupTree::entryWithID(root, unknownID), std::nullopt);
    EXPECT_EQ(GroupTree::parentOfGroup(root, unknownID), std::nullopt);
    EXPECT_EQ(GroupTree::groupContainingEntry(root, unknownID), std::nullopt);
    EXPECT_EQ(GroupTree::findGroup(root, unknownID), nullptr);
    EXPECT_EQ(GroupTree::findEntry(root, unknownID), nullptr);
}

TEST(GroupTreeTest, aGroupsIdentifierFindsNoEntryAndTheOtherWayRound) {
    const auto root = tree();
    EXPECT_EQ(GroupTree::entryWithID(root, idOf(2)), std::nullopt);
    EXPECT_EQ(GroupTree::groupWithID(root, idOf(0xB)), std::nullopt);
}

TEST(GroupTreeTest, theFirstInWalkingOrderIsFound) {
    auto root = tree();
    root.groups.mutableAt(1).id = idOf(3);                              // right has the identifier of deep
    root.groups.mutableAt(1).entries.append(entry(0xD, "d in right"));  // which comes later
    EXPECT_EQ(GroupTree::groupWithID(root, idOf(3))->name, "deep");
    EXPECT_EQ(GroupTree::entryWithID(root, idOf(0xD))->title, "d");
    // A group is asked for its own subgroups before any of these is.
    EXPECT_EQ(GroupTree::parentOfGroup(root, idOf(3))->name, "root");
}

TEST(GroupTreeTest, countsAllEntriesButNoHistoryItems) {
    EXPECT_EQ(GroupTree::totalEntryCount(tree()), 5);
    EXPECT_EQ(GroupTree::totalEntryCount(KdbxGroup{.groups = {KdbxGroup{}}}), 0);
}

TEST(GroupTreeTest, changesAGroupInPlace) {
    auto root = tree();
    int calls = 0;
    const auto rename = [&](KdbxGroup& group) {
        group.name = "renamed";
        ++calls;
    };

    EXPECT_TRUE(GroupTree::mutateGroup(root, idOf(3), rename));
    EXPECT_EQ(root.groups[0].groups[0].name, "renamed");
    EXPECT_TRUE(GroupTree::mutateGroup(root, idOf(1), rename));
    EXPECT_EQ(root.name, "renamed");
    EXPECT_EQ(calls, 2);

    EXPECT_FALSE(GroupTree::mutateGroup(root, unknownID, rename));
    EXPECT_EQ(calls, 2);
}

TEST(GroupTreeTest, aChangeThatReplacesTheSubgroupsIsNotWalkedFurther) {
    auto root = tree();
    int calls = 0;
    EXPECT_TRUE(GroupTree::mutateGroup(root, idOf(2), [&](KdbxGroup& group) {
        ++calls;
        group.groups = {KdbxGroup{.id = idOf(2), .name = "again"}};
        group.id = idOf(9);
    }));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(root.groups[0].id, idOf(9));
    EXPECT_EQ(GroupTree::groupWithID(root, idOf(9))->name, "left");
    EXPECT_EQ(GroupTree::groupWithID(root, idOf(2))->name, "again");
    EXPECT_EQ(root.groups[1].name, "right");
}

TEST(GroupTreeTest, changesAnEntryInPlace) {
    auto root = tree();
    const auto before = root;

    EXPECT_TRUE(GroupTree::mutateEntry(root, idOf(0xD), [](KdbxEntry& entry) { entry.title = "renamed"; }));

    EXPECT_EQ(root.groups[0].groups[0].entries[0].title, "renamed");
    EXPECT_EQ(before.groups[0].groups[0].entries[0].title, "d");
    EXPECT_EQ(root.modified, before.modified);
    EXPECT_EQ(root, before);
    EXPECT_FALSE(GroupTree::mutateEntry(root, unknownID, [](KdbxEntry&) { ADD_FAILURE(); }));
    EXPECT_FALSE(GroupTree::mutateEntry(root, idOf(0x99), [](KdbxEntry&) { ADD_FAILURE(); }));
}

TEST(GroupTreeTest, ofTwoEntriesWithOneIdentifierTheFirstInWalkingOrderIsChanged) {
    auto root = tree();
    root.groups.mutableAt(0).entries.append(entry(0xA, "in left"));
    root.groups.mutableAt(1).entries.append(entry(0xD, "in right"));
    const auto rename = [](KdbxEntry& entry) { entry.title = "changed"; };

    GroupTree::mutateEntry(root, idOf(0xA), rename);  // an own entry comes before those of subgroups
    GroupTree::mutateEntry(root, idOf(0xD), rename);  // and those of an earlier subgroup, however deep, before others

    EXPECT_EQ(titlesOf(root), (Titles{"changed", "b", "c", "in left", "changed", "e", "in right"}));
}

TEST(GroupTreeTest, anEntryThatWasGivenAnotherIdentifierIsFoundByItAlone) {
    auto root = tree();
    GroupTree::mutateEntry(root, idOf(0xB), [](KdbxEntry& entry) { entry.id = idOf(0x77); });
    EXPECT_EQ(GroupTree::entryWithID(root, idOf(0x77))->title, "b");
    EXPECT_EQ(GroupTree::entryWithID(root, idOf(0xB)), std::nullopt);
}

TEST(GroupTreeTest, removesAnEntryAndKeepsTheOrderOfTheRest) {
    auto root = tree();
    EXPECT_EQ(GroupTree::removeEntry(root, idOf(0xB))->title, "b");
    EXPECT_EQ(titlesOf(root), (Titles{"a", "c", "d", "e"}));
    EXPECT_EQ(GroupTree::removeEntry(root, idOf(0xD))->title, "d");
    EXPECT_EQ(titlesOf(root), (Titles{"a", "c", "e"}));
    EXPECT_EQ(GroupTree::removeEntry(root, idOf(0xD)), std::nullopt);
    EXPECT_EQ(GroupTree::removeEntry(root, idOf(0x99)), std::nullopt);
    EXPECT_EQ(titlesOf(root), (Titles{"a", "c", "e"}));
}

TEST(GroupTreeTest, ofTwoEntriesWithOneIdentifierTheFirstIsRemoved) {
    auto root = tree();
    root.entries.append(entry(0xA, "second a"));
    EXPECT_EQ(GroupTree::removeEntry(root, idOf(0xA))->title, "a");
    EXPECT_EQ(GroupTree::removeEntry(root, idOf(0xA))->title, "second a");
}

TEST(GroupTreeTest, removesAGroupWithItsSubtree) {
    auto root = tree();
    const auto removed = GroupTree::removeGroup(root, idOf(2));
    EXPECT_EQ(titlesOf(*removed), (Titles{"b", "c", "d"}));
    EXPECT_EQ(titlesOf(root), (Titles{"a", "e"}));
    EXPECT_EQ(GroupTree::removeGroup(root, idOf(3)), std::nullopt);
}

TEST(GroupTreeTest, theRootCannotBeRemoved) {
    auto root = tree();
    const auto before = root;
    EXPECT_EQ(GroupTree::removeGroup(root, idOf(1)), std::nullopt);
    EXPECT_EQ(root, before);
    EXPECT_TRUE(root.groups.sharesStorageWith(before.groups));
}

class RepairDuplicateIDsTest : public ::testing::Test {
protected:
    std::int64_t repair(KdbxGroup& root) { return GroupTree::repairDuplicateIDs(root, m_seenGroups, m_seenEntries); }

    UUIDSet m_seenGroups;
    UUIDSet m_seenEntries;
};

TEST_F(RepairDuplicateIDsTest, changesNothingAndCopiesNothingWhereNothingRepeats) {
    auto root = tree();
    const auto before = root;

    EXPECT_EQ(repair(root), 0);

    EXPECT_TRUE(root.groups.sharesStorageWith(before.groups));
    EXPECT_TRUE(root.entries.sharesStorageWith(before.entries));
    EXPECT_EQ(m_seenGroups, (UUIDSet{idOf(1), idOf(2), idOf(3), idOf(4)}));
    EXPECT_EQ(m_seenEntries, (UUIDSet{idOf(0xA), idOf(0xB), idOf(0xC), idOf(0xD), idOf(0xE)}));
}

TEST_F(RepairDuplicateIDsTest, ofTwoEntriesInOneGroupTheSecondIsChanged) {
    KdbxGroup root{.entries = {entry(1, "first"), entry(1, "second")}};

    EXPECT_EQ(repair(root), 1);

    EXPECT_EQ(root.entries[0].id, idOf(1));
    EXPECT_NE(root.entries[1].id, idOf(1));
    EXPECT_EQ(root.entries[1].title, "second");
    EXPECT_EQ(root.entries[1].modified, Timestamp{1});
    EXPECT_TRUE(m_seenEntries.contains(root.entries[1].id));
}

TEST_F(RepairDuplicateIDsTest, aGroupAndAnEntryMayShareAnIdentifier) {
    KdbxGroup root{.id = idOf(1), .entries = {entry(1, "a")}};
    EXPECT_EQ(repair(root), 0);
}

TEST_F(RepairDuplicateIDsTest, historyItemsAreNotLookedAt) {
    auto root = tree();
    root.entries.mutableAt(0).historyItems.append(entry(0xA, "before"));
    EXPECT_EQ(repair(root), 0);
}

TEST_F(RepairDuplicateIDsTest, theFirstInWalkingOrderKeepsItsIdentifier) {
    auto root = tree();
    root.groups.mutableAt(1).id = idOf(3);  // as deep, which is walked before
    const auto before = root;
    root.groups.mutableAt(0).groups.mutableAt(0).groups.append(before);  // all of it again, below deep
    const auto expectedGroups = 1 + 4;
    const auto expectedEntries = 5;

    EXPECT_EQ(repair(root), expectedGroups + expectedEntries);

    EXPECT_EQ(root.id, idOf(1));
    EXPECT_EQ(root.groups[0].id, idOf(2));
    EXPECT_EQ(root.groups[0].groups[0].id, idOf(3));
    EXPECT_EQ(root.groups[0].entries[0].id, idOf(0xB));
    // The copy below deep is walked before right, and so right is the one that changes.
    EXPECT_NE(root.groups[1].id, idOf(3));
    EXPECT_NE(root.groups[1].entries[0].id, idOf(0xE));
    EXPECT_EQ(m_seenGroups.size(), 8u);
    EXPECT_EQ(m_seenEntries.size(), 10u);
    EXPECT_EQ(before.groups[1].id, idOf(3));
    UUIDSet groups;
    UUIDSet entries;
    EXPECT_EQ(GroupTree::repairDuplicateIDs(root, groups, entries), 0);
}

TEST_F(RepairDuplicateIDsTest, whatTheCallerHasSeenCountsAsARepeat) {
    m_seenGroups.insert(idOf(1));
    m_seenEntries.insert(idOf(0xA));
    auto root = tree();

    EXPECT_EQ(repair(root), 2);

    EXPECT_NE(root.id, idOf(1));
    EXPECT_NE(root.entries[0].id, idOf(0xA));
}

TEST_F(RepairDuplicateIDsTest, aVaultOfRepeatsAloneIsRepairedAtOnce) {
    KdbxGroup root{.id = UUID()};
    for (int i = 0; i < 2'000; ++i)
        root.entries.append({.id = UUID()});
    for (int i = 0; i < 1'000; ++i) {
        KdbxGroup outer{.id = UUID(), .entries = {KdbxEntry{.id = UUID()}}};
        outer.groups.append(std::move(root));
        root = std::move(outer);
    }
    const auto before = root;

    EXPECT_EQ(repair(root), 1'000 + 2'999);

    EXPECT_EQ(m_seenGroups.size(), 1'001u);
    EXPECT_EQ(m_seenEntries.size(), 3'000u);
    EXPECT_TRUE(before.groups[0].id.isZero());
}

TEST(LargeGroupTreeTest, aChangeDeepInTheTreeCopiesThePathToItAndNothingElse) {
    auto root = largeTree();
    const auto snapshot = root;
    const auto id = root.groups[7].groups[3].entries[500].id;

    GroupTree::mutateEntry(root, id, [](KdbxEntry& entry) { entry.title = "changed"; });
    EXPECT_EQ(unshared(root, snapshot), (Unshared{.groups = 2, .entries = 1}));
    EXPECT_EQ(snapshot.groups[7].groups[3].entries[500].title, "");

    GroupTree::mutateEntry(root, id, [](KdbxEntry& entry) { entry.title = "again"; });
    EXPECT_EQ(unshared(root, snapshot), (Unshared{.groups = 2, .entries = 1}));

    GroupTree::mutateGroup(root, root.groups[2].id, [](KdbxGroup& group) { group.name = "changed"; });
    EXPECT_EQ(unshared(root, snapshot), (Unshared{.groups = 3, .entries = 1}));
}

TEST(LargeGroupTreeTest, whatFindsNothingCopiesNothing) {
    auto root = largeTree();
    const auto snapshot = root;

    GroupTree::mutateEntry(root, unknownID, [](KdbxEntry&) {});
    GroupTree::mutateGroup(root, unknownID, [](KdbxGroup&) {});
    GroupTree::removeEntry(root, unknownID);
    GroupTree::removeGroup(root, unknownID);

    EXPECT_TRUE(root.groups.sharesStorageWith(snapshot.groups));
}

TEST(LargeGroupTreeTest, removingAnEntryCopiesThePathToItsGroupAndNoEntryThatStays) {
    auto root = largeTree();
    const auto snapshot = root;

    GroupTree::removeEntry(root, root.groups[0].groups[0].entries[999].id);

    EXPECT_EQ(unshared(root, snapshot), (Unshared{.groups = 2, .entries = 0}));
}

TEST(LargeGroupTreeTest, fiftySnapshotsWithAnEntryChangedInEachCostAHundredthOfTheVault) {
    if (!countsAllocations)
        GTEST_SKIP() << "the sanitizer's allocator does not count";
    const auto allocated = [] {
        const auto info = ::mallinfo2();
        return info.uordblks + info.hblkhd;
    };
    // All in one group: where a plain array of pointers would be copied whole, fifty times.
    const auto before = allocated();
    KdbxGroup root;
    for (int i = 0; i < 100'000; ++i)
        root.entries.append({.title = "Hesap", .username = "kullanici@example.org", .created = {1}});
    const auto vault = allocated() - before;

    std::mt19937 random(1);
    std::vector<KdbxGroup> snapshots;
    for (int i = 0; i < 50; ++i) {
        snapshots.push_back(root);
        const auto id = root.entries[random() % root.entries.size()].id;
        GroupTree::mutateEntry(root, id, [](KdbxEntry& entry) { entry.title = "changed"; });
    }

    EXPECT_LT(allocated() - before - vault, vault / 50);
    EXPECT_EQ(unshared(root, snapshots.front()).entries, 50);
}

TEST(DeepGroupTreeTest, everyOperationReachesTheBottomOfATreeDeeperThanTheStack) {
    constexpr int depth = 20'000;
    KdbxGroup root{.id = idOf(2), .name = "bottom", .entries = {entry(0xA, "a")}};
    const KdbxGroup leaf{.id = idOf(3)};
    root.groups.append(leaf);
    for (int level = 0; level < depth; ++level) {
        KdbxGroup outer;
        outer.groups.append(std::move(root));
        root = std::move(outer);
    }

    EXPECT_EQ(GroupTree::groupWithID(root, idOf(2))->name, "bottom");
    EXPECT_EQ(GroupTree::pathToGroup(root, idOf(2))->size(), depth + 1u);
    EXPECT_EQ(GroupTree::groupContainingEntry(root, idOf(0xA))->name, "bottom");
    EXPECT_EQ(GroupTree::parentOfGroup(root, idOf(3))->name, "bottom");
    EXPECT_EQ(GroupTree::totalEntryCount(root), 1);
    const auto snapshot = root;
    EXPECT_TRUE(GroupTree::mutateEntry(root, idOf(0xA), [](KdbxEntry& entry) { entry.title = "changed"; }));
    EXPECT_EQ(GroupTree::findEntry(snapshot, idOf(0xA))->title, "a");
    EXPECT_TRUE(GroupTree::removeEntry(root, idOf(0xA)));
    EXPECT_TRUE(GroupTree::removeGroup(root, idOf(2)));
    UUIDSet groups;
    UUIDSet entries;
    EXPECT_EQ(GroupTree::repairDuplicateIDs(root, groups, entries), 0);
}

std::vector<UUID> idsOf(const std::vector<const KdbxEntry*>& entries) {
    std::vector<UUID> ids;
    for (const auto* entry : entries)
        ids.push_back(entry->id);
    return ids;
}

TEST(GroupTreeTest, severalEntriesAreFoundInTheOrderOfTheSearch) {
    const auto root = tree();

    EXPECT_EQ(idsOf(GroupTree::findEntries(root, {idOf(0xE), idOf(0xC), idOf(0xA), unknownID})),
              (std::vector{idOf(0xA), idOf(0xC), idOf(0xE)}));
    EXPECT_TRUE(GroupTree::findEntries(root, {}).empty());
    EXPECT_TRUE(GroupTree::findEntries(root, {idOf(0x99)}).empty()) << "a history item";
}

TEST(GroupTreeTest, severalEntriesAreTakenOutAndTheRestKeepsItsOrder) {
    auto root = tree();

    GroupTree::removeEntries(root, {idOf(0xE), idOf(0xB), unknownID});

    EXPECT_EQ(titlesOf(root), (Titles{"a", "c", "d"}));
}

TEST(GroupTreeTest, ofSeveralEntriesThatShareAnIdentifierTheFirstIsTakenOut) {
    auto root = tree();
    root.groups.mutableAt(1).entries.append(entry(0xA, "ikinci a"));

    GroupTree::removeEntries(root, {idOf(0xA)});

    EXPECT_EQ(titlesOf(root), (Titles{"b", "c", "d", "e", "ikinci a"}));
}

TEST(GroupTreeTest, takingSeveralEntriesOutCopiesThePathsToTheirGroupsAlone) {
    const auto before = tree();
    auto root = before;

    GroupTree::removeEntries(root, {idOf(0xE)});

    EXPECT_TRUE(shareElement(before.groups, root.groups, 0));
    EXPECT_FALSE(shareElement(before.groups, root.groups, 1));
    EXPECT_EQ(titlesOf(before), (Titles{"a", "b", "c", "d", "e"}));
}

TEST(GroupTreeTest, eachGroupThatHoldsSomeIsChangedOnceWithTheirPlaces) {
    auto root = tree();
    std::vector<std::pair<std::string, std::vector<std::size_t>>> changed;

    GroupTree::mutateGroupsHolding(
        root, {idOf(0xB), idOf(0xC), idOf(0xD), unknownID},
        [&](KdbxGroup& group, const std::vector<std::size_t>& places) { changed.emplace_back(group.name, places); });

    EXPECT_EQ(changed,
              (std::vector<std::pair<std::string, std::vector<std::size_t>>>{{"left", {0, 1}}, {"deep", {0}}}));
}

TEST(GroupTreeTest, manyEntriesAreTakenOutAsOneByOne) {
    std::mt19937 random(7);
    KdbxGroup whole;
    for (int number = 0; number < 1000; ++number) {
        if (number % 200 == 0)
            whole.groups.append({});
        whole.groups.mutableAt(whole.groups.size() - 1).entries.append({.title = std::to_string(number)});
    }
    for (const std::size_t count : {1U, 31U, 32U, 33U, 500U}) {
        auto root = whole;
        const auto all = root.allEntries();
        std::set<UUID> ids;
        while (ids.size() < count)
            ids.insert(all[random() % all.size()].id);
        auto oneByOne = root;
        for (const auto& id : ids)
            GroupTree::removeEntry(oneByOne, id);

        const auto found = GroupTree::findEntries(root, ids);
        EXPECT_EQ(found.size(), count);
        const auto before = root;
        const auto taken = GroupTree::removeEntries(root, ids);

        ASSERT_EQ(taken.size(), count);
        for (std::size_t i = 0; i < count; ++i)
            EXPECT_EQ(&taken[i], found[i]) << "the same, not a copy";
        EXPECT_EQ(titlesOf(root), titlesOf(oneByOne)) << count;
        EXPECT_TRUE(GroupTree::findEntries(root, ids).empty()) << count;
    }
}

}  // namespace
