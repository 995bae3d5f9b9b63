// SPDX-License-Identifier: MIT
#include "core/model/GroupWalk.h"

#include "tests/support/Sharing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ranges>
#include <string>

namespace {

static_assert(std::ranges::input_range<GroupWalk>);

KdbxGroup group(const std::string& name, std::initializer_list<KdbxGroup> subgroups = {}) {
    return {.name = name, .groups = subgroups};
}

/// a(b(c d) e(f) g)
KdbxGroup tree() {
    return group("a", {group("b", {group("c"), group("d")}), group("e", {group("f")}), group("g")});
}

std::string namesOf(GroupWalk walk) {
    std::string names;
    for (const auto& group : walk)
        names += group.name;
    return names;
}

/// Moves the walk on to the group of that name.
void goTo(GroupWalk& walk, const std::string& name) {
    while (walk.group().name != name)
        walk.advance();
}

TEST(GroupWalkTest, comesToEachGroupBeforeItsSubgroupsInStoredOrder) {
    const auto root = tree();
    EXPECT_EQ(namesOf(GroupWalk(root)), "abcdefg");
}

TEST(GroupWalkTest, ofAGroupWithoutSubgroupsIsThatGroup) {
    const auto root = group("a");
    EXPECT_EQ(namesOf(GroupWalk(root)), "a");
}

TEST(GroupWalkTest, staysBelowTheGroupThatItBeginsWith) {
    const auto root = tree();
    EXPECT_EQ(namesOf(GroupWalk(root.groups[0])), "bcd");
}

TEST(GroupWalkTest, givesTheVeryGroupsOfTheTree) {
    const auto root = tree();
    GroupWalk walk(root);
    goTo(walk, "f");
    EXPECT_EQ(&walk.group(), &root.groups[1].groups[0]);
}

TEST(GroupWalkTest, countsTheLevelsFromOne) {
    const auto root = tree();
    std::string levels;
    GroupWalk walk(root);
    for (const auto& group : walk)
        levels += group.name + std::to_string(walk.level());
    EXPECT_EQ(levels, "a1b2c3d3e2f3g2");
}

TEST(GroupWalkTest, knowsThePathToTheCurrentGroup) {
    const auto root = tree();
    GroupWalk walk(root);
    goTo(walk, "f");
    EXPECT_EQ(walk.path(), (std::vector<const KdbxGroup*>{&root, &root.groups[1], &root.groups[1].groups[0]}));
}

TEST(GroupWalkTest, leavesOutTheSubgroupsThatAreSkipped) {
    const auto root = tree();
    std::string names;
    GroupWalk walk(root);
    for (const auto& group : walk) {
        names += group.name;
        if (group.name == "b")
            walk.skipSubgroups();
    }
    EXPECT_EQ(names, "abefg");
}

TEST(GroupWalkTest, endsWhereTheSubgroupsOfTheRootAreSkipped) {
    const auto root = tree();
    GroupWalk walk(root);
    walk.skipSubgroups();
    walk.advance();
    EXPECT_TRUE(walk.isAtEnd());
}

TEST(GroupWalkTest, isWhereAnAlgorithmHasLeftIt) {
    const auto root = tree();
    GroupWalk walk(root);
    const auto found = std::ranges::find(walk, "e", &KdbxGroup::name);
    ASSERT_NE(found, walk.end());
    EXPECT_EQ(walk.group().name, "e");
    EXPECT_EQ(namesOf(walk), "efg");
}

TEST(GroupWalkTest, goesDownATreeThatIsDeeperThanTheStack) {
    KdbxGroup root = group("innermost");
    for (int level = 1; level < 100'000; ++level) {
        KdbxGroup outer;
        outer.groups.append(std::move(root));
        root = std::move(outer);
    }
    std::size_t deepest = 0;
    GroupWalk walk(root);
    for ([[maybe_unused]] const auto& group : walk)
        deepest = std::max(deepest, walk.level());
    EXPECT_EQ(deepest, 100'000U);
}

TEST(WritableGroupWalkTest, changesTheGroupInTheTree) {
    auto root = tree();
    WritableGroupWalk walk(root);
    goTo(walk, "f");
    walk.writableGroup().name = "F";
    EXPECT_EQ(namesOf(GroupWalk(root)), "abcdeFg");
    EXPECT_EQ(walk.group().name, "F");
}

TEST(WritableGroupWalkTest, changesTheRootItself) {
    auto root = tree();
    WritableGroupWalk(root).writableGroup().name = "A";
    EXPECT_EQ(root.name, "A");
}

TEST(WritableGroupWalkTest, leavesCopiesOfTheTreeAlone) {
    auto root = tree();
    const auto copy = root;
    WritableGroupWalk walk(root);
    goTo(walk, "d");
    walk.writableGroup().name = "D";
    EXPECT_EQ(namesOf(GroupWalk(copy)), "abcdefg");
    EXPECT_EQ(namesOf(GroupWalk(root)), "abcDefg");
}

TEST(WritableGroupWalkTest, copiesThePathAndNothingElse) {
    auto root = tree();
    const auto copy = root;
    WritableGroupWalk walk(root);
    goTo(walk, "c");
    walk.writableGroup().name = "C";
    EXPECT_FALSE(shareElement(root.groups, copy.groups, 0));
    EXPECT_TRUE(shareElement(root.groups[0].groups, copy.groups[0].groups, 1));
    EXPECT_TRUE(shareElement(root.groups, copy.groups, 1));
}

TEST(WritableGroupWalkTest, goesOnBehindAGroupThatItHasWrittenTo) {
    auto root = tree();
    const auto copy = root;
    for (WritableGroupWalk walk(root); !walk.isAtEnd(); walk.advance())
        walk.writableGroup().name += walk.group().name;
    EXPECT_EQ(namesOf(GroupWalk(root)), "aabbccddeeffgg");
    EXPECT_EQ(namesOf(GroupWalk(copy)), "abcdefg");
}

TEST(WritableGroupWalkTest, goesOnThroughTheSubgroupsThatTheGroupHasThen) {
    auto root = tree();
    std::string names;
    for (WritableGroupWalk walk(root); !walk.isAtEnd(); walk.advance()) {
        names += walk.group().name;
        if (walk.group().name == "b")
            walk.writableGroup().groups = {group("x")};
    }
    EXPECT_EQ(names, "abxefg");
}

TEST(WritableGroupWalkTest, copiesNothingUntilAGroupIsAskedForWriting) {
    auto root = tree();
    const auto copy = root;
    EXPECT_EQ(namesOf(WritableGroupWalk(root)), "abcdefg");
    EXPECT_TRUE(root.groups.sharesStorageWith(copy.groups));
}

}  // namespace
