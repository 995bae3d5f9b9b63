// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/GroupTree.h"
#include "app/state/VaultChanges.h"
#include "core/document/Nesting.h"

#include <algorithm>

namespace {

/// For each place the first one whose entry has the same identifier: mostly its own.
std::vector<std::size_t> firstPlaces(const SharedArray<KdbxEntry>& entries) {
    std::vector<std::size_t> places;
    places.reserve(entries.size());
    UUIDSet seen;
    seen.reserve(entries.size());
    for (const auto& entry : entries)
        places.push_back(seen.insert(entry.id) ? places.size() : entries.indexOfID(entry.id).value_or(places.size()));
    return places;
}

/// The places of the entries once those that move stand before the target, or else last. `shown` has all places, and
/// the entries that move keep the order that they have there. Of entries that share an identifier the first is the one
/// that counts; the others come behind all: a reorder loses none.
std::vector<std::size_t> arrangement(const SharedArray<KdbxEntry>& entries, const std::vector<std::size_t>& shown,
                                     const std::vector<std::size_t>& movingPlaces, std::optional<std::size_t> target) {
    std::vector<bool> isMoving(entries.size());
    for (const auto place : movingPlaces)
        isMoving[place] = true;
    const auto firsts = firstPlaces(entries);
    std::vector<bool> isTaken(entries.size());
    std::vector<std::size_t> moving;
    std::vector<std::size_t> order;
    for (const auto place : shown) {
        const auto first = firsts[place];
        if (!isTaken[first])
            (isMoving[first] ? moving : order).push_back(first);
        isTaken[first] = true;
    }
    order.insert(target ? std::ranges::find(order, *target) : order.end(), moving.begin(), moving.end());
    for (std::size_t place = 0; place < entries.size(); ++place)
        if (!isTaken[place])
            order.push_back(place);
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
    const auto targetPlace = target ? group.entries.indexOfID(*target) : std::nullopt;
    const auto movingPlaces = GroupTree::indicesOf(group.entries, ids);
    if (movingPlaces.empty() || (target && !targetPlace))
        return;
    const auto shown = m_browser.orderIn(group, m_sort);
    applyOrder(arrangement(group.entries, shown, movingPlaces, targetPlace),
               m_selectedGroupID.value_or(m_database->root.id));
}

// The order of a group's entries is the manual order; nothing else stores it. The step remembers the column that the
// list had, so that one undo brings both back. `order` has the former place of each entry.
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
                                       [&](KdbxGroup& group, const std::vector<std::size_t>& places) {
                                           for (const auto place : places) {
                                               auto copy = duplicateOf(group.entries[place], now);
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
