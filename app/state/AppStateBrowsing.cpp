// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/GroupTree.h"
#include "app/state/TreeWalk.h"

#include <algorithm>

bool AppState::isSearching() const {
    return isSearch(m_searchText);
}

EntryReferences AppState::visibleEntries() const {
    if (!m_database)
        return {};
    return m_sort.apply(isSearching() ? m_search.matching(m_database->root, m_searchText)
                                      : entriesOf(*selectedGroup()));
}

EntryReferences AppState::selectedEntries() const {
    EntryReferences entries;
    if (!m_database)
        return entries;
    // One walk for all of them: a search for each would take ages once everything is selected.
    forEachEntry(m_database->root, [&](const KdbxEntry& entry) {
        if (m_selectedEntryIDs.contains(entry.id))
            entries.push_back(&entry);
    });
    return entries;
}

const KdbxEntry* AppState::focusedEntry() const {
    if (!m_database || m_selectedEntryIDs.size() != 1)
        return nullptr;
    return GroupTree::findEntry(m_database->root, *m_selectedEntryIDs.begin());
}

void AppState::selectEntry(UUID id, Extending extending, Toggling toggling) {
    if (toggling == Toggling::yes) {
        auto ids = m_selectedEntryIDs;
        if (ids.erase(id) == 0)
            ids.insert(id);
        setSelectedEntryIDs(std::move(ids));
        m_selectionAnchor = id;
        return;
    }
    if (extending == Extending::yes && selectRange(id))
        return;
    setSelectedEntryIDs({id});
    m_selectionAnchor = id;
}

/// Selects all that is shown from the anchor to `id`, whichever comes first; not where one of them is not shown.
bool AppState::selectRange(UUID id) {
    if (!m_selectionAnchor)
        return false;
    const auto shown = visibleEntries();
    const auto place = [&](UUID wanted) {
        return std::find_if(shown.begin(), shown.end(), [&](const auto* entry) { return entry->id == wanted; });
    };
    const auto [first, last] = std::minmax({place(*m_selectionAnchor), place(id)});
    if (last == shown.end())
        return false;
    std::set<UUID> ids;
    for (auto entry = first; entry != last + 1; ++entry)
        ids.insert((*entry)->id);
    setSelectedEntryIDs(std::move(ids));
    return true;
}

void AppState::focusSearch() {
    assign(m_searchFocusToken, m_searchFocusToken + 1, &AppState::searchFocusTokenChanged);
}

void AppState::clearSearch() {
    setSearchText("");
}
