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
    if (!isSearching()) {
        const auto& group = *selectedGroup();
        return m_groupOrder.sorted(group, entriesOf(group), m_sort);
    }
    const auto found = m_search.matching(m_database->root, m_searchText);
    const auto entries = m_search.matching(m_database->root, "");
    startSearchOrder(entries);
    return m_searchOrder.sortedPart(m_database->root, entries, found, m_sort);
}

/// Where the group that is shown has all the entries, or all but a few, its list is sorted already.
void AppState::startSearchOrder(const EntryReferences& entries) const {
    if (m_searchOrder.isFarFrom(entries, m_sort) && !m_groupOrder.isFarFrom(entries, m_sort))
        m_searchOrder.takeOver(m_groupOrder);
}

bool AppState::prepareBrowsing() {
    constexpr std::size_t someEntries = 2000;
    if (!m_database) {
        Collation::ofUser().prepare();
        return false;
    }
    const auto& root = m_database->root;
    // The order is a step of its own: it takes as long as many of the others.
    if (!m_search.prepare(root, 0)) {
        m_search.prepare(root, someEntries);
        return true;
    }
    const auto entries = m_search.matching(root, "");
    startSearchOrder(entries);
    if (m_searchOrder.isFarFrom(entries, m_sort))
        static_cast<void>(m_searchOrder.sorted(root, entries, m_sort));
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
