// SPDX-License-Identifier: MIT
#include "app/state/EntryOrder.h"

#include "app/state/ListDifference.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>
#include <utility>

namespace {

constexpr auto gone = std::numeric_limits<std::uint32_t>::max();
constexpr std::size_t mostAdded = 64;

}  // namespace

EntryReferences EntryOrder::sorted(const KdbxGroup& holder, EntryReferences entries, EntrySort sort) {
    if (sort.column == EntrySort::Column::manual)
        return entries;
    remember(holder, std::move(entries), sort.column);
    EntryReferences sorted(m_order.size());
    std::ranges::transform(m_order, sorted.begin(), [this](std::uint32_t index) { return m_entries[index]; });
    if (!sort.ascending)
        std::ranges::reverse(sorted);
    return sorted;
}

std::vector<std::size_t> EntryOrder::sortedIndices(const KdbxGroup& holder, EntryReferences entries, EntrySort sort) {
    std::vector<std::size_t> indices(entries.size());
    if (sort.column == EntrySort::Column::manual) {
        std::iota(indices.begin(), indices.end(), 0U);
        return indices;
    }
    remember(holder, std::move(entries), sort.column);
    std::ranges::copy(m_order, indices.begin());
    if (!sort.ascending)
        std::ranges::reverse(indices);
    return indices;
}

EntryReferences EntryOrder::sortedPart(const KdbxGroup& holder, EntryReferences entries, const EntryReferences& part,
                                       EntrySort sort) {
    // To sort a few is less than to sort all.
    if (sort.column == EntrySort::Column::manual || (part.size() < entries.size() / 4 && isFarFrom(entries, sort)))
        return sort.apply(part);
    remember(holder, std::move(entries), sort.column);
    std::vector<bool> isWanted(m_entries.size());
    auto next = m_entries.begin();
    for (const auto* entry : part) {
        next = std::find(next, m_entries.end(), entry);
        if (next == m_entries.end())
            return sort.apply(part);
        isWanted[static_cast<std::size_t>(next++ - m_entries.begin())] = true;
    }
    EntryReferences sorted;
    sorted.reserve(part.size());
    for (const auto index : m_order)
        if (isWanted[index])
            sorted.push_back(m_entries[index]);
    if (!sort.ascending)
        std::ranges::reverse(sorted);
    return sorted;
}

bool EntryOrder::isFarFrom(const EntryReferences& entries, EntrySort sort) const {
    return sort.column != EntrySort::Column::manual &&
           (m_column != sort.column || (m_entries != entries && !changesTo(entries)));
}

void EntryOrder::takeOver(const EntryOrder& other) {
    m_holder = other.m_holder;
    m_column = other.m_column;
    m_entries = other.m_entries;
    m_order = other.m_order;
}

void EntryOrder::forget() noexcept {
    m_holder.reset();
    m_column = EntrySort::Column::manual;
    m_entries = {};
    m_order = {};
}

void EntryOrder::remember(const KdbxGroup& holder, EntryReferences entries, EntrySort::Column column) {
    if (m_column != column || m_entries != entries) {
        if (const auto changes = m_column == column ? changesTo(entries) : std::nullopt)
            follow(*changes, entries);
        else
            m_order = EntrySort{.column = column, .ascending = true}.order(entries);
        m_column = column;
        m_entries = std::move(entries);
    }
    m_holder = holder;
}

/// None where so much has changed that sorting anew is less work.
std::optional<EntryOrder::Changes> EntryOrder::changesTo(const EntryReferences& entries) const {
    Changes changes{.indices = std::vector(m_entries.size(), gone), .added = {}};
    ListChange last{};
    const auto keepUntil = [&](std::size_t former) {
        const auto first = changes.indices.begin() + static_cast<std::ptrdiff_t>(last.before + last.removed);
        std::iota(first, changes.indices.begin() + static_cast<std::ptrdiff_t>(former),
                  static_cast<std::uint32_t>(last.after + last.added));
    };
    ListDifference difference(m_entries, entries, std::equal_to());
    while (const auto change = difference.next()) {
        if (changes.added.size() + change->added > mostAdded)
            return std::nullopt;
        keepUntil(change->before);
        for (std::size_t i = 0; i < change->added; ++i)
            changes.added.push_back(static_cast<std::uint32_t>(change->after + i));
        last = *change;
    }
    keepUntil(m_entries.size());
    return changes;
}

void EntryOrder::follow(const Changes& changes, const EntryReferences& entries) {
    for (auto& index : m_order)
        index = changes.indices[index];
    std::erase(m_order, gone);
    for (const auto added : changes.added) {
        const auto precedes = [&](std::uint32_t a, std::uint32_t b) {
            const auto order = EntrySort::compare(m_column, *entries[a], *entries[b]);
            return order < 0 || (order == 0 && a < b);
        };
        m_order.insert(std::ranges::lower_bound(m_order, added, precedes), added);
    }
}
