// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/EntryOrder.h"
#include "app/state/EntrySearch.h"

#include <cstddef>
#include <string_view>
#include <vector>

/// What a list shows of a vault, and in which order: the entries of a group, or those that a search finds.
///
/// It remembers texts and orders, so that the next look costs what has changed since. That is as private as the vault:
/// `forget` it when the vault is locked.
class EntryBrowser {
public:
    /// The group's own entries.
    [[nodiscard]] EntryReferences entriesIn(const KdbxGroup& group, EntrySort sort);

    /// The same, as indices in the group's stored order.
    [[nodiscard]] std::vector<std::size_t> orderIn(const KdbxGroup& group, EntrySort sort);

    /// The entries below the root that `matches` finds.
    [[nodiscard]] EntryReferences matching(const KdbxGroup& root, std::string_view query, EntrySort sort);

    /// Does a little of what the first `matching` would have to wait for. Whether there is more to do.
    bool prepare(const KdbxGroup& root, EntrySort sort);

    void forget() noexcept;

private:
    void startSearchOrder(const EntryReferences& entries, EntrySort sort);

    EntrySearch m_search;
    EntryOrder m_groupOrder;   // of the entries of the group that was shown last
    EntryOrder m_searchOrder;  // of all entries
};
