// SPDX-License-Identifier: MIT
#include "app/state/GroupTree.h"

#include <algorithm>

namespace {

/// Where a walk over the groups stands: depth first, each group before its subgroups, in stored order.
/// The path is kept here and not on the stack, since a tree may be deeper than the stack.
class Walk {
public:
    explicit Walk(const KdbxGroup& root) { m_path.push_back({.group = &root}); }

    [[nodiscard]] bool isAtEnd() const noexcept { return m_path.empty(); }
    [[nodiscard]] const KdbxGroup& group() const noexcept { return *m_path.back().group; }

    void advance() {
        while (!m_path.empty()) {
            auto& [group, nextSubgroup, own] = m_path.back();
            if (nextSubgroup < group->groups.size()) {
                m_path.push_back({.group = &group->groups[nextSubgroup++]});
                return;
            }
            m_path.pop_back();
        }
    }

    /// The current group for writing, and with it the path to it; `root` is the one that the walk began with.
    KdbxGroup& ownGroup(KdbxGroup& root) {
        m_path.front().own = &root;
        for (std::size_t depth = 1; depth < m_path.size(); ++depth) {
            auto& parent = m_path[depth - 1];
            auto& step = m_path[depth];
            if (!step.own)
                step.group = step.own = &parent.own->groups.mutableAt(parent.nextSubgroup - 1);
        }
        return *m_path.back().own;
    }

    [[nodiscard]] std::size_t level() const noexcept { return m_path.size(); }

    [[nodiscard]] std::vector<KdbxGroup> path() const {
        std::vector<KdbxGroup> groups;
        groups.reserve(m_path.size());
        for (const auto& step : m_path)
            groups.push_back(*step.group);
        return groups;
    }

private:
    struct Step {
        const KdbxGroup* group;
        std::size_t nextSubgroup = 0;
        KdbxGroup* own = nullptr;  // the group once it is for writing
    };
    std::vector<Step> m_path;
};

template <class Predicate>
Walk firstGroupWhere(const KdbxGroup& root, Predicate isWanted) {
    Walk walk(root);
    while (!walk.isAtEnd() && !isWanted(walk.group()))
        walk.advance();
    return walk;
}

Walk walkToGroup(const KdbxGroup& root, const UUID& id) {
    return firstGroupWhere(root, [&](const KdbxGroup& group) { return group.id == id; });
}

/// A walk that stands at the group that holds the node, and where it stands in it.
struct Found {
    Walk holder;
    std::size_t index;
};

template <class Array>
std::optional<Found> findIn(const KdbxGroup& root, Array KdbxGroup::*array, const UUID& id) {
    std::optional<std::size_t> index;
    auto walk = firstGroupWhere(root, [&](const KdbxGroup& group) {
        index = (group.*array).indexOfID(id);
        return index.has_value();
    });
    return index ? std::optional(Found{std::move(walk), *index}) : std::nullopt;
}

// So few identifiers are looked for one by one: an array finds one without looking into its entries.
constexpr std::size_t fewIDs = 32;

/// Where the array holds entries that are still wanted, which they are not from then on.
std::vector<std::size_t> takePlaces(const SharedArray<KdbxEntry>& entries, const std::set<UUID>& ids, UUIDSet& wanted) {
    std::vector<std::size_t> places;
    if (ids.size() > fewIDs) {
        std::size_t place = 0;
        for (const auto& entry : entries) {
            if (wanted.erase(entry.id))
                places.push_back(place);
            ++place;
        }
        return places;
    }
    for (const auto& id : ids)
        if (const auto place = wanted.contains(id) ? entries.indexOfID(id) : std::nullopt) {
            places.push_back(*place);
            wanted.erase(id);
        }
    std::sort(places.begin(), places.end());
    return places;
}

/// Calls `visit` with the walk at each group that holds some of the entries, and their places there.
template <class Visit>
void forEachHolder(const KdbxGroup& root, const std::set<UUID>& ids, Visit visit) {
    UUIDSet wanted(ids.begin(), ids.end(), ids.size());
    for (Walk walk(root); !walk.isAtEnd() && !wanted.empty(); walk.advance())
        if (const auto places = takePlaces(walk.group().entries, ids, wanted); !places.empty())
            visit(walk, places);
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
    const auto walk = walkToGroup(root, id);
    return walk.isAtEnd() ? nullptr : &walk.group();
}

const KdbxEntry* findEntry(const KdbxGroup& root, const UUID& id) {
    const auto found = findIn(root, &KdbxGroup::entries, id);
    return found ? &found->holder.group().entries[found->index] : nullptr;
}

std::optional<KdbxGroup> groupWithID(const KdbxGroup& root, const UUID& id) {
    return copyOf(findGroup(root, id));
}

std::optional<KdbxEntry> entryWithID(const KdbxGroup& root, const UUID& id) {
    return copyOf(findEntry(root, id));
}

std::optional<KdbxGroup> groupContainingEntry(const KdbxGroup& root, const UUID& entryID) {
    const auto found = findIn(root, &KdbxGroup::entries, entryID);
    return found ? std::optional(found->holder.group()) : std::nullopt;
}

std::optional<KdbxGroup> parentOfGroup(const KdbxGroup& root, const UUID& groupID) {
    const auto found = findIn(root, &KdbxGroup::groups, groupID);
    return found ? std::optional(found->holder.group()) : std::nullopt;
}

std::optional<std::vector<KdbxGroup>> pathToGroup(const KdbxGroup& root, const UUID& id) {
    const auto walk = walkToGroup(root, id);
    return walk.isAtEnd() ? std::nullopt : std::optional(walk.path());
}

std::optional<std::size_t> levelOfGroup(const KdbxGroup& root, const UUID& id) {
    const auto walk = walkToGroup(root, id);
    return walk.isAtEnd() ? std::nullopt : std::optional(walk.level());
}

std::int64_t totalEntryCount(const KdbxGroup& root) {
    std::int64_t count = 0;
    for (Walk walk(root); !walk.isAtEnd(); walk.advance())
        count += static_cast<std::int64_t>(walk.group().entries.size());
    return count;
}

std::vector<std::size_t> placesOf(const SharedArray<KdbxEntry>& entries, const std::set<UUID>& ids) {
    UUIDSet wanted(ids.begin(), ids.end(), ids.size());
    return takePlaces(entries, ids, wanted);
}

bool mutateGroup(KdbxGroup& root, const UUID& id, const std::function<void(KdbxGroup&)>& change) {
    return mutateGroupAtLevel(root, id, [&](KdbxGroup& group, std::size_t) { change(group); });
}

bool mutateEntry(KdbxGroup& root, const UUID& id, const std::function<void(KdbxEntry&)>& change) {
    return mutateEntryAtLevel(root, id, [&](KdbxEntry& entry, std::size_t) { change(entry); });
}

bool mutateGroupAtLevel(KdbxGroup& root, const UUID& id,
                        const std::function<void(KdbxGroup&, std::size_t level)>& change) {
    auto walk = walkToGroup(root, id);
    if (walk.isAtEnd())
        return false;
    change(walk.ownGroup(root), walk.level());
    return true;
}

bool mutateEntryAtLevel(KdbxGroup& root, const UUID& id,
                        const std::function<void(KdbxEntry&, std::size_t level)>& change) {
    auto found = findIn(root, &KdbxGroup::entries, id);
    if (!found)
        return false;
    const auto level = found->holder.level();
    found->holder.ownGroup(root).entries.mutate(found->index, [&](KdbxEntry& entry) { change(entry, level); });
    return true;
}

std::vector<const KdbxEntry*> findEntries(const KdbxGroup& root, const std::set<UUID>& ids) {
    std::vector<const KdbxEntry*> found;
    forEachHolder(root, ids, [&](const Walk& walk, const std::vector<std::size_t>& places) {
        for (const auto place : places)
            found.push_back(&walk.group().entries[place]);
    });
    return found;
}

void mutateGroupsHolding(KdbxGroup& root, const std::set<UUID>& entryIDs,
                         const std::function<void(KdbxGroup&, const std::vector<std::size_t>&)>& change) {
    forEachHolder(root, entryIDs,
                  [&](Walk& walk, const std::vector<std::size_t>& places) { change(walk.ownGroup(root), places); });
}

SharedArray<KdbxEntry> removeEntries(KdbxGroup& root, const std::set<UUID>& ids) {
    SharedArray<KdbxEntry> all;
    mutateGroupsHolding(root, ids, [&](KdbxGroup& group, const std::vector<std::size_t>& places) {
        auto removedHere = group.entries;
        removedHere.rearrange(places);
        all.appendAll(removedHere);
        std::vector<std::size_t> kept;
        kept.reserve(group.entries.size() - places.size());
        auto removed = places.begin();
        for (std::size_t i = 0; i < group.entries.size(); ++i)
            if (removed != places.end() && *removed == i)
                ++removed;
            else
                kept.push_back(i);
        group.entries.rearrange(kept);
    });
    return all;
}

std::optional<KdbxEntry> removeEntry(KdbxGroup& root, const UUID& id) {
    auto found = findIn(root, &KdbxGroup::entries, id);
    return found ? std::optional(found->holder.ownGroup(root).entries.removeAt(found->index)) : std::nullopt;
}

std::optional<KdbxGroup> removeGroup(KdbxGroup& root, const UUID& id) {
    auto found = findIn(root, &KdbxGroup::groups, id);
    return found ? std::optional(found->holder.ownGroup(root).groups.removeAt(found->index)) : std::nullopt;
}

std::int64_t repairDuplicateIDs(KdbxGroup& root, UUIDSet& seenGroups, UUIDSet& seenEntries) {
    seenEntries.reserve(seenEntries.size() + static_cast<std::size_t>(totalEntryCount(root)));
    std::int64_t repairs = 0;
    for (Walk walk(root); !walk.isAtEnd(); walk.advance()) {
        if (isRepeat(seenGroups, walk.group().id)) {
            walk.ownGroup(root).id = unseenID(seenGroups);
            ++repairs;
        }
        auto entry = walk.group().entries.begin();
        for (std::size_t i = 0; i < walk.group().entries.size(); ++i, ++entry) {
            if (!isRepeat(seenEntries, entry->id))
                continue;
            auto& entries = walk.ownGroup(root).entries;
            entries.mutate(i, [&](KdbxEntry& repeat) { repeat.id = unseenID(seenEntries); });
            entry = entries.begin() + static_cast<std::ptrdiff_t>(i);
            ++repairs;
        }
    }
    return repairs;
}

}  // namespace GroupTree
