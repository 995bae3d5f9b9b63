// SPDX-License-Identifier: MIT
#include "app/state/EntryBrowser.h"

EntryReferences EntryBrowser::entriesIn(const KdbxGroup& group, EntrySort sort) {
    return m_groupOrder.sorted(group, entriesOf(group), sort);
}

std::vector<std::size_t> EntryBrowser::orderIn(const KdbxGroup& group, EntrySort sort) {
    return m_groupOrder.sortedIndices(group, entriesOf(group), sort);
}

EntryReferences EntryBrowser::matching(const KdbxGroup& root, std::string_view query, EntrySort sort) {
    const auto found = m_search.matching(root, query);
    const auto entries = m_search.matching(root, "");
    startSearchOrder(entries, sort);
    return m_searchOrder.sortedPart(root, entries, found, sort);
}

/// Where the group that was shown has all the entries, or all but a few, its list is sorted already.
void EntryBrowser::startSearchOrder(const EntryReferences& entries, EntrySort sort) {
    if (m_searchOrder.isFarFrom(entries, sort) && !m_groupOrder.isFarFrom(entries, sort))
        m_searchOrder.takeOver(m_groupOrder);
}

bool EntryBrowser::prepare(const KdbxGroup& root, EntrySort sort) {
    constexpr std::size_t someEntries = 2000;
    // The order is a step of its own: it takes as long as many of the others.
    if (!m_search.prepare(root, 0)) {
        m_search.prepare(root, someEntries);
        return true;
    }
    const auto entries = m_search.matching(root, "");
    startSearchOrder(entries, sort);
    if (m_searchOrder.isFarFrom(entries, sort))
        static_cast<void>(m_searchOrder.sorted(root, entries, sort));
    return false;
}

void EntryBrowser::forget() noexcept {
    m_search.forget();
    m_groupOrder.forget();
    m_searchOrder.forget();
}
