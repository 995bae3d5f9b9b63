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
std::vector<std::size_t> takePlaces(const SharedArray<KdbxEntry>& entries, std::unordered_set<UUID>& wanted) {
    std::vector<std::size_t> places;
    if (wanted.size() <= fewIDs) {
        std::erase_if(wanted, [&](const UUID& id) {
            const auto place = entries.indexOfID(id);
            if (place)
                places.push_back(*place);
            return place.has_value();
        });
        std::sort(places.begin(), places.end());
        return places;
    }
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (wanted.erase(entries[i].id) > 0)
            places.push_back(i);
    return places;
}

/// Calls `visit` with the walk at each group that holds some of the entries, and their places there.
template <class Visit>
void forEachHolder(const KdbxGroup& root, const std::set<UUID>& ids, Visit visit) {
    std::unordered_set<UUID> wanted(ids.begin(), ids.end());
    for (Walk walk(root); !walk.isAtEnd() && !wanted.empty(); walk.advance())
        if (const auto places = takePlaces(walk.group().entries, wanted); !places.empty())
            visit(walk, places);
}

template <class Node>
std::optional<Node> copyOf(const Node* node) {
    return node ? std::optional(*node) : std::nullopt;
}

/// Whether the identifier was met before; it is met now.
bool isRepeat(std::unordered_set<UUID>& seen, const UUID& id) {
    return !seen.insert(id).second;
}

UUID unseenID(std::unordered_set<UUID>& seen) {
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

std::int64_t totalEntryCount(const KdbxGroup& root) {
    std::int64_t count = 0;
    for (Walk walk(root); !walk.isAtEnd(); walk.advance())
        count += static_cast<std::int64_t>(walk.group().entries.size());
    return count;
}

bool mutateGroup(KdbxGroup& root, const UUID& id, const std::function<void(KdbxGroup&)>& change) {
    auto walk = walkToGroup(root, id);
    if (walk.isAtEnd())
        return false;
    change(walk.ownGroup(root));
    return true;
}

bool mutateEntry(KdbxGroup& root, const UUID& id, const std::function<void(KdbxEntry&)>& change) {
    auto found = findIn(root, &KdbxGroup::entries, id);
    if (!found)
        return false;
    found->holder.ownGroup(root).entries.mutate(found->index, change);
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

void removeEntries(KdbxGroup& root, const std::set<UUID>& ids) {
    mutateGroupsHolding(root, ids, [](KdbxGroup& group, const std::vector<std::size_t>& places) {
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
}

std::optional<KdbxEntry> removeEntry(KdbxGroup& root, const UUID& id) {
    auto found = findIn(root, &KdbxGroup::entries, id);
    return found ? std::optional(found->holder.ownGroup(root).entries.removeAt(found->index)) : std::nullopt;
}

std::optional<KdbxGroup> removeGroup(KdbxGroup& root, const UUID& id) {
    auto found = findIn(root, &KdbxGroup::groups, id);
    return found ? std::optional(found->holder.ownGroup(root).groups.removeAt(found->index)) : std::nullopt;
}

std::int64_t repairDuplicateIDs(KdbxGroup& root, std::unordered_set<UUID>& seenGroups,
                                std::unordered_set<UUID>& seenEntries) {
    std::int64_t repairs = 0;
    for (Walk walk(root); !walk.isAtEnd(); walk.advance()) {
        if (isRepeat(seenGroups, walk.group().id)) {
            walk.ownGroup(root).id = unseenID(seenGroups);
            ++repairs;
        }
        for (std::size_t i = 0; i < walk.group().entries.size(); ++i) {
            if (!isRepeat(seenEntries, walk.group().entries[i].id))
                continue;
            walk.ownGroup(root).entries.mutate(i, [&](KdbxEntry& entry) { entry.id = unseenID(seenEntries); });
            ++repairs;
        }
    }
    return repairs;
}

}  // namespace GroupTree
