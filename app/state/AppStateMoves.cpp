// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/GroupTree.h"
#include "core/document/Nesting.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace {

/// The group, if it can be put into the other where depth is no matter; null if not. What it holds, itself included,
/// cannot take it: nothing would hold it then.
const KdbxGroup* movableGroup(const KdbxGroup& root, const UUID& id, const UUID& parentID) {
    const auto* const group = id == root.id ? nullptr : GroupTree::findGroup(root, id);
    const bool isMovable = group && !GroupTree::findGroup(*group, parentID) && GroupTree::findGroup(root, parentID);
    return isMovable ? group : nullptr;
}

}  // namespace

void AppState::shiftEntries(const std::set<UUID>& ids, Shift direction) {
    if (!m_database || isSearching())
        return;
    const auto shown = visibleEntries();
    const auto isMoving = [&](const KdbxEntry* entry) { return ids.contains(entry->id); };
    if (direction == Shift::up) {
        const auto first = std::ranges::find_if(shown, isMoving);
        if (first != shown.end() && first != shown.begin())
            moveEntriesBefore(ids, (*std::prev(first))->id);
        return;
    }
    const auto last = std::find_if(shown.rbegin(), shown.rend(), isMoving);
    if (last == shown.rend() || last == shown.rbegin())
        return;
    const auto below = std::prev(last);  // the row that they go behind
    if (below == shown.rbegin())
        moveEntriesToEnd(ids);
    else
        moveEntriesBefore(ids, (*std::prev(below))->id);
}

bool AppState::canMoveGroup(UUID id, UUID parentID) const {
    if (!m_database)
        return false;
    const auto* const group = movableGroup(m_database->root, id, parentID);
    return group && Nesting::fits(*group, *GroupTree::levelOfGroup(m_database->root, parentID) + 1);
}

std::size_t AppState::deepestParentLevel(UUID id) const {
    const auto* const group = m_database ? GroupTree::findGroup(m_database->root, id) : nullptr;
    return group ? std::max<std::size_t>(Nesting::deepestLevelFor(*group), 1) - 1 : 0;
}

void AppState::moveGroupTo(UUID id, UUID parentID) {
    if (!m_database || !movableGroup(m_database->root, id, parentID))
        return;
    const auto& siblings = GroupTree::findGroup(m_database->root, parentID)->groups;
    if (!siblings.empty() && siblings.back().id == id)
        return;  // it is there already
    const auto now = m_services.scheduler.now();
    edit("Grubu Taşı", [&](KdbxDatabase& database) {
        auto group = GroupTree::removeGroup(database.root, id);
        GroupTree::mutateGroupAtLevel(database.root, parentID, [&](KdbxGroup& parent, std::size_t level) {
            Nesting::require(*group, level + 1);
            parent.groups.append(std::move(*group));
            parent.isExpanded = true;
            parent.modified = now;
        });
    });
}

void AppState::shiftGroup(UUID id, Shift direction) {
    const auto parent = m_database ? GroupTree::parentOfGroup(m_database->root, id) : std::nullopt;
    if (!parent)
        return;
    const auto index = *parent->groups.indexOfID(id);
    if (direction == Shift::up ? index == 0 : index + 1 == parent->groups.size())
        return;
    std::vector<std::size_t> order(parent->groups.size());
    std::iota(order.begin(), order.end(), 0U);
    std::swap(order[index], order[direction == Shift::up ? index - 1 : index + 1]);
    const auto now = m_services.scheduler.now();
    edit("Sırayı Değiştir", [&](KdbxDatabase& database) {
        GroupTree::mutateGroup(database.root, parent->id, [&](KdbxGroup& group) {
            group.groups.rearrange(order);
            group.modified = now;
        });
    });
}
