// SPDX-License-Identifier: MIT
#include "app/state/GroupTree.h"

#include "core/model/GroupWalk.h"

#include <algorithm>

namespace {

/// Moves the walk on to the first group that is wanted, or to its end.
template <class Predicate>
void goTo(GroupWalk& walk, Predicate isWanted) {
    while (!walk.isAtEnd() && !isWanted(walk.group()))
        walk.advance();
}

/// Moves the walk on to the group; whether there is one.
bool goToGroup(GroupWalk& walk, const UUID& id) {
    goTo(walk, [&](const KdbxGroup& group) { return group.id == id; });
    return !walk.isAtEnd();
}

/// Moves the walk on to the group that holds the node in this array, and says at which index.
template <class Array>
std::optional<std::size_t> goToHolder(GroupWalk& walk, Array KdbxGroup::*array, const UUID& id) {
    std::optional<std::size_t> index;
    goTo(walk, [&](const KdbxGroup& group) { return (index = (group.*array).indexOfID(id)).has_value(); });
    return index;
}

// So few identifiers are looked for one by one: an array finds one without looking into its entries.
constexpr std::size_t fewIDs = 32;

/// The ascending indices of the entries that are still wanted, which they are not from then on.
std::vector<std::size_t> takeIndices(const SharedArray<KdbxEntry>& entries, const std::set<UUID>& ids,
                                     UUIDSet& wanted) {
    std::vector<std::size_t> indices;
    if (ids.size() > fewIDs) {
        std::size_t index = 0;
        for (const auto& entry : entries) {
            if (wanted.erase(entry.id))
                indices.push_back(index);
            ++index;
        }
        return indices;
    }
    for (const auto& id : ids)
        if (const auto index = wanted.contains(id) ? entries.indexOfID(id) : std::nullopt) {
            indices.push_back(*index);
            wanted.erase(id);
        }
    std::sort(indices.begin(), indices.end());
    return indices;
}

/// Calls `visit` while the walk is at a group that holds some of the entries, with their indices there.
template <class Visit>
void forEachHolder(GroupWalk& walk, const std::set<UUID>& ids, Visit visit) {
    UUIDSet wanted(ids.begin(), ids.end(), ids.size());
    for (; !walk.isAtEnd() && !wanted.empty(); walk.advance())
        if (const auto indices = takeIndices(walk.group().entries, ids, wanted); !indices.empty())
            visit(indices);
}

template <class Node>
std::optional<Node> copyOf(const Node* node) {
    return node ? std::optional(*node) : std::nullopt;
}

/// Whether the identifier was met before; it is met now.
bool isRepeat(UUIDSet& seen, const UUID& id) {
    return !seen.insert(id);
}

UUID unseenID(UUIDSet& seen) {
    const auto id = UUID::random();
    seen.insert(id);
    return id;
}

}  // namespace

namespace GroupTree {

const KdbxGroup* findGroup(const KdbxGroup& root, const UUID& id) {
    GroupWalk walk(root);
    return goToGroup(walk, id) ? &walk.group() : nullptr;
}

const KdbxEntry* findEntry(const KdbxGroup& root, const UUID& id) {
    GroupWalk walk(root);
    const auto index = goToHolder(walk, &KdbxGroup::entries, id);
    return index ? &walk.group().entries[*index] : nullptr;
}

std::optional<KdbxGroup> groupWithID(const KdbxGroup& root, const UUID& id) {
    return copyOf(findGroup(root, id));
}

std::optional<KdbxEntry> entryWithID(const KdbxGroup& root, const UUID& id) {
    return copyOf(findEntry(root, id));
}

std::optional<KdbxGroup> groupContainingEntry(const KdbxGroup& root, const UUID& entryID) {
    GroupWalk walk(root);
    return goToHolder(walk, &KdbxGroup::entries, entryID) ? std::optional(walk.group()) : std::nullopt;
}

std::optional<KdbxGroup> parentOfGroup(const KdbxGroup& root, const UUID& groupID) {
    GroupWalk walk(root);
    return goToHolder(walk, &KdbxGroup::groups, groupID) ? std::optional(walk.group()) : std::nullopt;
}

std::optional<std::vector<KdbxGroup>> pathToGroup(const KdbxGroup& root, const UUID& id) {
    GroupWalk walk(root);
    if (!goToGroup(walk, id))
        return std::nullopt;
    std::vector<KdbxGroup> path;
    for (const auto* group : walk.path())
        path.push_back(*group);
    return path;
}

std::optional<std::size_t> levelOfGroup(const KdbxGroup& root, const UUID& id) {
    GroupWalk walk(root);
    return goToGroup(walk, id) ? std::optional(walk.level()) : std::nullopt;
}

std::int64_t totalEntryCount(const KdbxGroup& root) {
    std::int64_t count = 0;
    for (const auto& group : GroupWalk(root))
        count += static_cast<std::int64_t>(group.entries.size());
    return count;
}

std::vector<std::size_t> indicesOf(const SharedArray<KdbxEntry>& entries, const std::set<UUID>& ids) {
    UUIDSet wanted(ids.begin(), ids.end(), ids.size());
    return takeIndices(entries, ids, wanted);
}

bool mutateGroup(KdbxGroup& root, const UUID& id, const std::function<void(KdbxGroup&)>& change) {
    return mutateGroupAtLevel(root, id, [&](KdbxGroup& group, std::size_t) { change(group); });
}

bool mutateEntry(KdbxGroup& root, const UUID& id, const std::function<void(KdbxEntry&)>& change) {
    return mutateEntryAtLevel(root, id, [&](KdbxEntry& entry, std::size_t) { change(entry); });
}

bool mutateGroupAtLevel(KdbxGroup& root, const UUID& id,
                        const std::function<void(KdbxGroup&, std::size_t level)>& change) {
    WritableGroupWalk walk(root);
    if (!goToGroup(walk, id))
        return false;
    change(walk.writableGroup(), walk.level());
    return true;
}

bool mutateEntryAtLevel(KdbxGroup& root, const UUID& id,
                        const std::function<void(KdbxEntry&, std::size_t level)>& change) {
    WritableGroupWalk walk(root);
    const auto index = goToHolder(walk, &KdbxGroup::entries, id);
    if (!index)
        return false;
    walk.writableGroup().entries.mutate(*index, [&](KdbxEntry& entry) { change(entry, walk.level()); });
    return true;
}

std::vector<const KdbxEntry*> findEntries(const KdbxGroup& root, const std::set<UUID>& ids) {
    std::vector<const KdbxEntry*> found;
    GroupWalk walk(root);
    forEachHolder(walk, ids, [&](const std::vector<std::size_t>& indices) {
        for (const auto index : indices)
            found.push_back(&walk.group().entries[index]);
    });
    return found;
}

void mutateGroupsHolding(KdbxGroup& root, const std::set<UUID>& entryIDs,
                         const std::function<void(KdbxGroup&, const std::vector<std::size_t>&)>& change) {
    WritableGroupWalk walk(root);
    forEachHolder(walk, entryIDs,
                  [&](const std::vector<std::size_t>& indices) { change(walk.writableGroup(), indices); });
}

SharedArray<KdbxEntry> removeEntries(KdbxGroup& root, const std::set<UUID>& ids) {
    SharedArray<KdbxEntry> all;
    mutateGroupsHolding(root, ids, [&](KdbxGroup& group, const std::vector<std::size_t>& indices) {
        auto removedHere = group.entries;
        removedHere.rearrange(indices);
        all.appendAll(removedHere);
        std::vector<std::size_t> kept;
        kept.reserve(group.entries.size() - indices.size());
        auto removed = indices.begin();
        for (std::size_t i = 0; i < group.entries.size(); ++i)
            if (removed != indices.end() && *removed == i)
                ++removed;
            else
                kept.push_back(i);
        group.entries.rearrange(kept);
    });
    return all;
}

std::optional<KdbxEntry> removeEntry(KdbxGroup& root, const UUID& id) {
    WritableGroupWalk walk(root);
    const auto index = goToHolder(walk, &KdbxGroup::entries, id);
    return index ? std::optional(walk.writableGroup().entries.removeAt(*index)) : std::nullopt;
}

std::optional<KdbxGroup> removeGroup(KdbxGroup& root, const UUID& id) {
    WritableGroupWalk walk(root);
    const auto index = goToHolder(walk, &KdbxGroup::groups, id);
    return index ? std::optional(walk.writableGroup().groups.removeAt(*index)) : std::nullopt;
}

std::int64_t repairDuplicateIDs(KdbxGroup& root, UUIDSet& seenGroups, UUIDSet& seenEntries) {
    seenEntries.reserve(seenEntries.size() + static_cast<std::size_t>(totalEntryCount(root)));
    std::int64_t repairs = 0;
    for (WritableGroupWalk walk(root); !walk.isAtEnd(); walk.advance()) {
        if (isRepeat(seenGroups, walk.group().id)) {
            walk.writableGroup().id = unseenID(seenGroups);
            ++repairs;
        }
        auto entry = walk.group().entries.begin();
        for (std::size_t i = 0; i < walk.group().entries.size(); ++i, ++entry) {
            if (!isRepeat(seenEntries, entry->id))
                continue;
            auto& entries = walk.writableGroup().entries;
            entries.mutate(i, [&](KdbxEntry& repeat) { repeat.id = unseenID(seenEntries); });
            entry = entries.begin() + static_cast<std::ptrdiff_t>(i);
            ++repairs;
        }
    }
    return repairs;
}

}  // namespace GroupTree
