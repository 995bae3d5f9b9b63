// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/GroupTree.h"

#include <algorithm>

void AppState::updateEntry(KdbxEntry entry) {
    entry.modified = m_services.scheduler.now();
    edit("Kaydı Düzenle", [&](KdbxDatabase& database) {
        const auto limit = static_cast<std::size_t>(std::max<std::int64_t>(database.meta.historyMaxItems, 1));
        GroupTree::mutateEntry(database.root, entry.id, [&](KdbxEntry& stored) {
            auto item = stored;
            item.historyItems.clear();  // history items never hold history
            entry.historyItems = stored.historyItems;
            entry.historyItems.append(std::move(item));
            while (entry.historyItems.size() > limit)
                entry.historyItems.removeAt(0);
            stored = entry;
        });
    });
}
