// SPDX-License-Identifier: MIT
#include "core/model/KdbxDatabase.h"

#include <gtest/gtest.h>

namespace {

KdbxEntry entryTitled(std::string title) {
    KdbxEntry entry;
    entry.title = std::move(title);
    return entry;
}

std::vector<std::string> titlesOf(const std::vector<KdbxEntry>& entries) {
    std::vector<std::string> titles;
    for (const auto& entry : entries)
        titles.push_back(entry.title);
    return titles;
}

TEST(KdbxDatabaseTest, allEntriesGivesAGroupsOwnEntriesBeforeThoseOfItsSubgroups) {
    const auto c = entryTitled("C");
    const KdbxGroup subgroup{.entries = {c}};
    const KdbxGroup group{.groups = {subgroup}, .entries = {entryTitled("A"), entryTitled("B")}};

    EXPECT_EQ(titlesOf(group.allEntries()), (std::vector<std::string>{"A", "B", "C"}));
}

TEST(KdbxDatabaseTest, allEntriesOfAnEmptySubtreeIsEmpty) {
    EXPECT_TRUE(KdbxGroup{.groups = {KdbxGroup{}}}.allEntries().empty());
}

}  // namespace
