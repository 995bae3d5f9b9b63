// SPDX-License-Identifier: MIT
#include "app/state/VaultChanges.h"

#include "app/state/GroupTree.h"
#include "core/document/Nesting.h"

#include <algorithm>
#include <numeric>

namespace VaultChanges {
namespace {

/// Leaves the newest items, which are last.
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

}  // namespace

bool addEntry(KdbxDatabase& database, KdbxEntry entry, UUID groupID, Timestamp now) {
    return GroupTree::mutateGroupAtLevel(database.root, groupID, [&](KdbxGroup& group, std::size_t level) {
        Nesting::require(entry, level);
        group.entries.append(std::move(entry));
        group.modified = now;
    });
}

bool replaceEntry(KdbxDatabase& database, KdbxEntry entry, Timestamp now) {
    entry.modified = now;
    return GroupTree::mutateEntryAtLevel(database.root, entry.id, [&](KdbxEntry& stored, std::size_t level) {
        entry.historyItems = historyWith(stored, database.meta.historyMaxItems);
        Nesting::require(entry, level);
        stored = entry;
    });
}

bool addGroup(KdbxDatabase& database, KdbxGroup group, UUID parentID, Timestamp now) {
    return GroupTree::mutateGroupAtLevel(database.root, parentID, [&](KdbxGroup& parent, std::size_t level) {
        Nesting::require(group, level + 1);
        parent.groups.append(std::move(group));
        parent.isExpanded = true;
        parent.modified = now;
    });
}

bool replaceGroup(KdbxDatabase& database, const KdbxGroup& group, Timestamp now) {
    return GroupTree::mutateGroup(database.root, group.id, [&](KdbxGroup& stored) {
        stored.name = group.name;
        stored.notes = group.notes;
        stored.iconID = group.iconID;
        stored.defaultAutoTypeSequence = group.defaultAutoTypeSequence;
        stored.modified = now;
    });
}

}  // namespace VaultChanges
