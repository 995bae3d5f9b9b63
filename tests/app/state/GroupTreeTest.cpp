// SPDX-License-Identifier: MIT
#include "app/state/GroupTree.h"

#include <gtest/gtest.h>

namespace {

/// An identifier that a reader can tell from another.
UUID idOf(std::uint8_t number) {
    std::array<std::uint8_t, 16> bytes{};
    bytes[15] = number;
    return *UUID::fromKdbxBytes(bytes);
}

KdbxEntry entry(std::uint8_t id, std::string title) {
    return {.id = idOf(id), .title = std::move(title)};
}

std::vector<std::string> namesOf(const std::vector<KdbxGroup>& groups) {
    std::vector<std::string> names;
    for (const auto& group : groups)
        names.push_back(group.name);
    return names;
}

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

TEST(GroupTreeTest, findsEveryGroupTheRootIncluded) {
    const auto root = tree();
    EXPECT_EQ(GroupTree::groupWithID(root, idOf(1))->name, "root");
    EXPECT_EQ(GroupTree::groupWithID(root, idOf(3))->name, "deep");
    EXPECT_EQ(GroupTree::groupWithID(root, idOf(4))->name, "right");
}

TEST(GroupTreeTest, pathToTheRootIsTheRootAlone) {
    EXPECT_EQ(namesOf(*GroupTree::pathToGroup(tree(), idOf(1))), std::vector<std::string>{"root"});
}

TEST(GroupTreeTest, pathHoldsBothEndsAndWhatLiesBetween) {
    EXPECT_EQ(namesOf(*GroupTree::pathToGroup(tree(), idOf(3))), (std::vector<std::string>{"root", "left", "deep"}));
}

}  // namespace
