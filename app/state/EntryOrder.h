// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/EntrySort.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// Sorts one list again and again while the vault changes: it remembers the order of the entries that stay, so that a
/// change of a few costs the sorting of these and not of all.
///
/// It holds the group that the entries are in, which is as private as the vault: `forget` it when the vault is locked.
class EntryOrder {
public:
    EntryOrder() = default;
    EntryOrder(const EntryOrder&) = delete;
    EntryOrder& operator=(const EntryOrder&) = delete;

    /// What `sort.apply(entries)` gives. The entries lie in `holder` or below it.
    [[nodiscard]] EntryReferences sorted(const KdbxGroup& holder, EntryReferences entries, EntrySort sort);

    /// The same, as indices of the entries.
    [[nodiscard]] std::vector<std::size_t> sortedIndices(const KdbxGroup& holder, EntryReferences entries,
                                                         EntrySort sort);

    /// What `sort.apply(part)` gives, where `part` are some of the entries in the same order.
    [[nodiscard]] EntryReferences sortedPart(const KdbxGroup& holder, EntryReferences entries,
                                             const EntryReferences& part, EntrySort sort);

    /// Whether `sorted` would have to sort all of them anew.
    [[nodiscard]] bool isFarFrom(const EntryReferences& entries, EntrySort sort) const;

    /// Remembers what another one does, so that it need not be found out twice.
    void takeOver(const EntryOrder& other);

    void forget() noexcept;

private:
    /// How the list has changed since it was sorted.
    struct Changes {
        std::vector<std::uint32_t> indices;  // of the former entries among the present ones
        std::vector<std::uint32_t> added;    // indices of the others, ascending
    };

    void remember(const KdbxGroup& holder, EntryReferences entries, EntrySort::Column column);
    [[nodiscard]] std::optional<Changes> changesTo(const EntryReferences& entries) const;
    void follow(const Changes& changes, const EntryReferences& entries);

    std::optional<KdbxGroup> m_holder;  // keeps the entries from being changed in place
    EntrySort::Column m_column = EntrySort::Column::manual;
    EntryReferences m_entries;
    std::vector<std::uint32_t> m_order;  // their indices, ascending by the column, equal ones as they come
};
