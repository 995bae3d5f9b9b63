// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/GroupTree.h"
#include "core/text/Collation.h"

#include <algorithm>

bool AppState::isSearching() const {
    return isSearch(m_searchText);
}

EntryReferences AppState::visibleEntries() const {
    if (!m_database)
        return {};
    return isSearching() ? m_browser.matching(m_database->root, m_searchText, m_sort)
                         : m_browser.entriesIn(*selectedGroup(), m_sort);
}

bool AppState::prepareBrowsing() {
    if (m_database)
        return m_browser.prepare(m_database->root, m_sort);
    Collation::ofUser().prepare();
    return false;
}

EntryReferences AppState::selectedEntries() const {
    return m_database ? GroupTree::findEntries(m_database->root, m_selectedEntryIDs) : EntryReferences();
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
    const auto find = [&](UUID wanted) { return std::ranges::find(shown, wanted, &KdbxEntry::id); };
    const auto [first, last] = std::minmax({find(*m_selectionAnchor), find(id)});
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
