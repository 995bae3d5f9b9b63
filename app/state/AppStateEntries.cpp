// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/GroupTree.h"
#include "app/state/VaultChanges.h"
#include "core/document/Nesting.h"

#include <algorithm>

namespace {

/// For each index the first one whose entry has the same identifier: mostly the index itself.
std::vector<std::size_t> firstIndices(const SharedArray<KdbxEntry>& entries) {
    std::vector<std::size_t> indices;
    indices.reserve(entries.size());
    UUIDSet seen;
    seen.reserve(entries.size());
    for (const auto& entry : entries)
        indices.push_back(seen.insert(entry.id) ? indices.size()
                                                : entries.indexOfID(entry.id).value_or(indices.size()));
    return indices;
}

/// The former indices of the entries, in the order that they have once some of them are moved before the target, or
/// else to the end. `shown` has all indices, and the entries that move keep the order that they have there. Of entries
/// that share an identifier the first one counts, and the others follow at the end, so that a reorder loses none.
std::vector<std::size_t> arrangement(const SharedArray<KdbxEntry>& entries, const std::vector<std::size_t>& shown,
                                     const std::vector<std::size_t>& movingIndices, std::optional<std::size_t> target) {
    std::vector<bool> isMoving(entries.size());
    for (const auto index : movingIndices)
        isMoving[index] = true;
    const auto firsts = firstIndices(entries);
    std::vector<bool> isTaken(entries.size());
    std::vector<std::size_t> moving;
    std::vector<std::size_t> order;
    for (const auto index : shown) {
        const auto first = firsts[index];
        if (!isTaken[first])
            (isMoving[first] ? moving : order).push_back(first);
        isTaken[first] = true;
    }
    order.insert(target ? std::ranges::find(order, *target) : order.end(), moving.begin(), moving.end());
    for (std::size_t index = 0; index < entries.size(); ++index)
        if (!isTaken[index])
            order.push_back(index);
    return order;
}

KdbxEntry duplicateOf(const KdbxEntry& entry, Timestamp now) {
    auto copy = entry;
    copy.id = UUID::random();
    copy.title += " kopya";
    copy.created = now;
    copy.modified = now;
    copy.historyItems.clear();
    return copy;
}

}  // namespace

void AppState::addEntry(KdbxEntry entry, UUID groupID) {
    const Step step(m_signals);
    const auto id = entry.id;
    const auto now = m_services.scheduler.now();
    bool isRefused = m_database.has_value();
    edit("Kayıt Ekle", [&](KdbxDatabase& database) {
        VaultChanges::addEntry(database, std::move(entry), groupID, now);
        isRefused = false;
    });
    if (!isRefused)
        setSelectedEntryIDs({id});
}

void AppState::updateEntry(KdbxEntry entry) {
    const auto now = m_services.scheduler.now();
    edit("Kaydı Düzenle", [&](KdbxDatabase& database) { VaultChanges::replaceEntry(database, std::move(entry), now); });
}

void AppState::deleteEntries(const std::set<UUID>& ids) {
    if (ids.empty())
        return;
    const Step step(m_signals);
    edit(ids.size() == 1 ? "Kaydı Sil" : std::to_string(ids.size()) + " Kaydı Sil",
         [&](KdbxDatabase& database) { GroupTree::removeEntries(database.root, ids); });
    setSelectedEntryIDs({});
}

void AppState::moveEntriesBefore(std::set<UUID> ids, UUID target) {
    if (!ids.contains(target))
        moveWithinList(ids, target);
}

void AppState::moveEntriesToEnd(std::set<UUID> ids) {
    moveWithinList(ids, std::nullopt);
}

/// Moves entries of the list, in the order in which they are shown, before the target or else to the end.
void AppState::moveWithinList(const std::set<UUID>& ids, std::optional<UUID> target) {
    if (!m_database || isSearching())
        return;
    const auto& group = *selectedGroup();
    const auto targetIndex = target ? group.entries.indexOfID(*target) : std::nullopt;
    const auto movingIndices = GroupTree::indicesOf(group.entries, ids);
    if (movingIndices.empty() || (target && !targetIndex))
        return;
    const auto shown = m_browser.orderIn(group, m_sort);
    applyOrder(arrangement(group.entries, shown, movingIndices, targetIndex),
               m_selectedGroupID.value_or(m_database->root.id));
}

// The order of a group's entries is the manual order; nothing else stores it. The step remembers the column that the
// list had, so that one undo brings both back. `order` has the former index of each entry.
void AppState::applyOrder(const std::vector<std::size_t>& order, UUID groupID) {
    const Step step(m_signals);
    const auto now = m_services.scheduler.now();
    edit("Sırayı Değiştir", [&](KdbxDatabase& database) {
        GroupTree::mutateGroup(database.root, groupID, [&](KdbxGroup& group) {
            group.entries.rearrange(order);
            group.modified = now;
        });
    });
    if (m_sort.column == EntrySort::Column::manual)
        return;
    setSort({.column = EntrySort::Column::manual, .ascending = m_sort.ascending});
    m_statusLine.flash("Kendi sıralamana geçildi.");
}

void AppState::duplicateEntries(std::set<UUID> ids) {
    if (!m_database || ids.empty())
        return;
    const Step step(m_signals);
    const auto now = m_services.scheduler.now();
    std::set<UUID> copies;
    edit(ids.size() == 1 ? "Kaydı Çoğalt" : "Kayıtları Çoğalt", [&](KdbxDatabase& database) {
        GroupTree::mutateGroupsHolding(database.root, ids,
                                       [&](KdbxGroup& group, const std::vector<std::size_t>& indices) {
                                           for (const auto index : indices) {
                                               auto copy = duplicateOf(group.entries[index], now);
                                               copies.insert(copy.id);
                                               group.entries.append(std::move(copy));
                                           }
                                       });
    });
    setSelectedEntryIDs(std::move(copies));
}

void AppState::moveEntriesTo(std::set<UUID> ids, UUID groupID) {
    if (!m_database)
        return;
    const auto isInVault = [&](const UUID& id) { return GroupTree::findEntry(m_database->root, id) != nullptr; };
    if (std::ranges::none_of(ids, isInVault))
        return;
    const auto now = m_services.scheduler.now();
    edit("Kayıtları Taşı", [&](KdbxDatabase& database) {
        const auto moving = GroupTree::removeEntries(database.root, ids);
        GroupTree::mutateGroupAtLevel(database.root, groupID, [&](KdbxGroup& group, std::size_t level) {
            for (const auto& entry : moving)
                Nesting::require(entry, level);
            group.entries.appendAll(moving);
            group.modified = now;
        });
    });
}
