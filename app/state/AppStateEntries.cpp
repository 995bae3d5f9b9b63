// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/GroupTree.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

namespace {

/// Leaves the newest items, which stand last.
void keepLast(SharedArray<KdbxEntry>& items, std::size_t count) {
    if (items.size() <= count)
        return;
    std::vector<std::size_t> kept(count);
    std::iota(kept.begin(), kept.end(), items.size() - count);
    items.rearrange(kept);
}

/// What an entry's history is once the entry is replaced. History items hold no history of their own.
SharedArray<KdbxEntry> historyWith(const KdbxEntry& replaced, std::int64_t maxItems) {
    auto items = replaced.historyItems;
    auto item = replaced;
    item.historyItems.clear();
    items.append(std::move(item));
    keepLast(items, static_cast<std::size_t>(std::max<std::int64_t>(maxItems, 1)));
    return items;
}

/// The entries of `order` first, in that order, then all others as they stood: a reorder loses none.
std::vector<std::size_t> arrangement(const SharedArray<KdbxEntry>& entries, const std::vector<UUID>& order) {
    std::unordered_map<UUID, std::size_t> places;
    for (std::size_t i = 0; i < entries.size(); ++i)
        places.emplace(entries[i].id, i);
    std::vector<std::size_t> indices;
    std::vector<bool> isTaken(entries.size());
    for (const auto& id : order) {
        const auto place = places.find(id);
        if (place == places.end() || isTaken[place->second])
            continue;
        indices.push_back(place->second);
        isTaken[place->second] = true;
    }
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (!isTaken[i])
            indices.push_back(i);
    return indices;
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
    const Step step(*this);
    const auto id = entry.id;
    const auto now = m_services.scheduler.now();
    edit("Kayıt Ekle", [&](KdbxDatabase& database) {
        GroupTree::mutateGroup(database.root, groupID, [&](KdbxGroup& group) {
            group.entries.append(std::move(entry));
            group.modified = now;
        });
    });
    setSelectedEntryIDs({id});
}

void AppState::updateEntry(KdbxEntry entry) {
    entry.modified = m_services.scheduler.now();
    edit("Kaydı Düzenle", [&](KdbxDatabase& database) {
        GroupTree::mutateEntry(database.root, entry.id, [&](KdbxEntry& stored) {
            entry.historyItems = historyWith(stored, database.meta.historyMaxItems);
            stored = entry;
        });
    });
}

void AppState::deleteEntries(std::set<UUID> ids) {
    if (ids.empty())
        return;
    const Step step(*this);
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
    std::vector<UUID> moving;
    std::vector<UUID> order;
    for (const auto* entry : visibleEntries())
        (ids.contains(entry->id) ? moving : order).push_back(entry->id);
    const auto place = target ? std::find(order.begin(), order.end(), *target) : order.end();
    if (moving.empty() || (target && place == order.end()))
        return;
    order.insert(place, moving.begin(), moving.end());
    applyOrder(order, m_selectedGroupID.value_or(m_database->root.id));
}

// The order of a group's entries is the manual order; nothing else stores it. The step remembers the column that the
// list had, so that one undo brings both back.
void AppState::applyOrder(const std::vector<UUID>& order, UUID groupID) {
    const Step step(*this);
    const auto now = m_services.scheduler.now();
    edit("Sırayı Değiştir", [&](KdbxDatabase& database) {
        GroupTree::mutateGroup(database.root, groupID, [&](KdbxGroup& group) {
            group.entries.rearrange(arrangement(group.entries, order));
            group.modified = now;
        });
    });
    if (m_sort.column == EntrySort::Column::manual)
        return;
    setSort({.column = EntrySort::Column::manual, .ascending = m_sort.ascending});
    flash("Kendi sıralamana geçildi.");
}

void AppState::duplicateEntries(std::set<UUID> ids) {
    if (!m_database || ids.empty())
        return;
    const Step step(*this);
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
    const auto moving = GroupTree::findEntries(m_database->root, ids);
    if (moving.empty())
        return;
    const auto now = m_services.scheduler.now();
    edit("Kayıtları Taşı", [&](KdbxDatabase& database) {
        GroupTree::removeEntries(database.root, ids);
        GroupTree::mutateGroup(database.root, groupID, [&](KdbxGroup& group) {
            for (const auto* entry : moving)
                group.entries.append(*entry);
            group.modified = now;
        });
    });
}
