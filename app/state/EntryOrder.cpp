// SPDX-License-Identifier: MIT
#include "app/state/EntryOrder.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace {

constexpr auto gone = std::numeric_limits<std::uint32_t>::max();
constexpr std::size_t mostAdded = 64;
constexpr std::ptrdiff_t farthestLook = 64;

/// Where `entry` stands among the next few; `end` where it does not.
EntryReferences::const_iterator soon(const KdbxEntry* entry, EntryReferences::const_iterator from,
                                     EntryReferences::const_iterator end) {
    const auto last = from + std::min(farthestLook, end - from);
    const auto found = std::find(from, last, entry);
    return found == last ? end : found;
}

}  // namespace

EntryReferences EntryOrder::sorted(const KdbxGroup& holder, EntryReferences entries, EntrySort sort) {
    if (sort.column == EntrySort::Column::manual)
        return entries;
    remember(holder, std::move(entries), sort.column);
    EntryReferences sorted(m_order.size());
    std::ranges::transform(m_order, sorted.begin(), [this](std::uint32_t place) { return m_entries[place]; });
    if (!sort.ascending)
        std::ranges::reverse(sorted);
    return sorted;
}

std::vector<std::size_t> EntryOrder::sortedPlaces(const KdbxGroup& holder, EntryReferences entries, EntrySort sort) {
    std::vector<std::size_t> places(entries.size());
    if (sort.column == EntrySort::Column::manual) {
        std::iota(places.begin(), places.end(), 0U);
        return places;
    }
    remember(holder, std::move(entries), sort.column);
    std::ranges::copy(m_order, places.begin());
    if (!sort.ascending)
        std::ranges::reverse(places);
    return places;
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
    for (const auto place : m_order)
        if (isWanted[place])
            sorted.push_back(m_entries[place]);
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
    Changes changes{.places = std::vector(m_entries.size(), gone), .added = {}};
    auto before = m_entries.begin();
    auto now = entries.begin();
    const auto take = [&](auto end) {
        for (; now != end; ++now)
            changes.added.push_back(static_cast<std::uint32_t>(now - entries.begin()));
    };
    while (before != m_entries.end() && now != entries.end()) {
        if (*before == *now) {
            changes.places[static_cast<std::size_t>(before++ - m_entries.begin())] =
                static_cast<std::uint32_t>(now++ - entries.begin());
        } else if (const auto later = soon(*now, before, m_entries.end()); later != m_entries.end()) {
            before = later;  // those between are gone
        } else {
            const auto added = soon(*before, now, entries.end());
            if (added == entries.end())
                ++before;  // another stands in its place
            take(added == entries.end() ? std::next(now) : added);
        }
        if (changes.added.size() > mostAdded)
            return std::nullopt;
    }
    if (entries.end() - now > static_cast<std::ptrdiff_t>(mostAdded))
        return std::nullopt;
    take(entries.end());
    return changes.added.size() > mostAdded ? std::nullopt : std::optional(std::move(changes));
}

void EntryOrder::follow(const Changes& changes, const EntryReferences& entries) {
    for (auto& place : m_order)
        place = changes.places[place];
    std::erase(m_order, gone);
    for (const auto added : changes.added) {
        const auto precedes = [&](std::uint32_t a, std::uint32_t b) {
            const auto order = EntrySort::compare(m_column, *entries[a], *entries[b]);
            return order < 0 || (order == 0 && a < b);
        };
        m_order.insert(std::ranges::lower_bound(m_order, added, precedes), added);
    }
}
