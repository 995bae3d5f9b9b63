// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"
#include "core/model/UUIDSet.h"

#include <cstddef>
#include <functional>
#include <set>
#include <vector>

/// How state code finds and changes a node of the group tree by its identifier.
///
/// Every search goes depth first and in stored order, and the first hit ends it: a group's own entries come before its
/// subgroups', and a repeated identifier further on is never reached. History items are not searched. Nothing here
/// changes a `modified` time. A change copies what other copies of the vault share on the path to the node, and no
/// more; a search that finds nothing copies nothing. No tree is too deep.
namespace GroupTree {

/// The group itself, borrowed until the tree changes; none where no group of the subtree has the identifier.
[[nodiscard]] const KdbxGroup* findGroup(const KdbxGroup& root, const UUID& id);

/// The entry itself, borrowed until the tree changes.
[[nodiscard]] const KdbxEntry* findEntry(const KdbxGroup& root, const UUID& id);

/// A group of the subtree, `root` included.
[[nodiscard]] std::optional<KdbxGroup> groupWithID(const KdbxGroup& root, const UUID& id);

/// An entry of the subtree.
[[nodiscard]] std::optional<KdbxEntry> entryWithID(const KdbxGroup& root, const UUID& id);

/// The group that directly holds the entry.
[[nodiscard]] std::optional<KdbxGroup> groupContainingEntry(const KdbxGroup& root, const UUID& entryID);

/// The group that directly holds the group. The root has none.
[[nodiscard]] std::optional<KdbxGroup> parentOfGroup(const KdbxGroup& root, const UUID& groupID);

/// The groups from `root` down to the one with the identifier, both included.
[[nodiscard]] std::optional<std::vector<KdbxGroup>> pathToGroup(const KdbxGroup& root, const UUID& id);

/// How many groups there are from `root` down to the one with the identifier, both included.
[[nodiscard]] std::optional<std::size_t> levelOfGroup(const KdbxGroup& root, const UUID& id);

/// How many entries `allEntries` would give.
[[nodiscard]] std::int64_t totalEntryCount(const KdbxGroup& root);

/// The ascending indices of those entries of a group that have these identifiers, the first of each.
[[nodiscard]] std::vector<std::size_t> indicesOf(const SharedArray<KdbxEntry>& entries, const std::set<UUID>& ids);

/// Runs `change` on the group in place, at most once. Returns whether the group was found.
bool mutateGroup(KdbxGroup& root, const UUID& id, const std::function<void(KdbxGroup&)>& change);

/// Runs `change` on the entry in place, at most once. Returns whether the entry was found.
bool mutateEntry(KdbxGroup& root, const UUID& id, const std::function<void(KdbxEntry&)>& change);

/// The same two with how many groups there are from the root down to the one that is changed, or that holds the entry,
/// both included.
bool mutateGroupAtLevel(KdbxGroup& root, const UUID& id,
                        const std::function<void(KdbxGroup&, std::size_t level)>& change);
bool mutateEntryAtLevel(KdbxGroup& root, const UUID& id,
                        const std::function<void(KdbxEntry&, std::size_t level)>& change);

/// The entries with these identifiers, borrowed until the tree changes, in the order of the search. The tree is walked
/// once however many there are, here and in the two below.
[[nodiscard]] std::vector<const KdbxEntry*> findEntries(const KdbxGroup& root, const std::set<UUID>& ids);

/// Runs `change` once on each group that directly holds some of the entries, with their ascending indices in it.
void mutateGroupsHolding(KdbxGroup& root, const std::set<UUID>& entryIDs,
                         const std::function<void(KdbxGroup&, const std::vector<std::size_t>&)>& change);

/// Takes the entries out of their groups and gives them back in the order of the search, as they are shared with other
/// copies of the vault. The order of what remains is kept.
SharedArray<KdbxEntry> removeEntries(KdbxGroup& root, const std::set<UUID>& ids);

/// Takes the entry out of its group and gives it back. The order of what remains is kept.
std::optional<KdbxEntry> removeEntry(KdbxGroup& root, const UUID& id);

/// Takes the group with its subtree out of its parent and gives it back. The root cannot be taken out.
std::optional<KdbxGroup> removeGroup(KdbxGroup& root, const UUID& id);

/// Gives a new random identifier to each group, and to each entry, whose identifier an earlier one of its kind has in
/// the order of the search. A group and an entry may share one. Returns how many got a new one.
///
/// The sets are the caller's, empty at first; they are filled with the identifiers met.
std::int64_t repairDuplicateIDs(KdbxGroup& root, UUIDSet& seenGroups, UUIDSet& seenEntries);

}  // namespace GroupTree
