// SPDX-License-Identifier: MIT
#include "app/state/EntrySort.h"

#include "core/text/Collation.h"

#include <algorithm>
#include <compare>
#include <numeric>
#include <utility>

namespace {

// Entries lie scattered: those that are read so many steps later are fetched now.
constexpr std::size_t ahead = 16;

struct Names {
    std::string_view rawValue;
    std::string_view label;
};

constexpr std::array<Names, EntrySort::allCases.size()> names{{
    {.rawValue = "manual", .label = "Kendi sıram"},
    {.rawValue = "title", .label = "Başlık"},
    {.rawValue = "username", .label = "Kullanıcı"},
    {.rawValue = "url", .label = "Adres"},
    {.rawValue = "modified", .label = "Değiştirilme"},
}};

const Names& namesOf(EntrySort::Column column) noexcept {
    return names[static_cast<std::size_t>(column)];
}

std::string KdbxEntry::*fieldOf(EntrySort::Column column) noexcept {
    switch (column) {
        case EntrySort::Column::username:
            return &KdbxEntry::username;
        case EntrySort::Column::url:
            return &KdbxEntry::url;
        default:
            return &KdbxEntry::title;
    }
}

std::vector<std::uint32_t> orderByText(const EntryReferences& entries, std::string KdbxEntry::*field) {
    std::vector<std::string_view> texts(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (i + ahead < entries.size())
            __builtin_prefetch(&(entries[i + ahead]->*field));
        texts[i] = entries[i]->*field;
    }
    return Collation::ofUser().order(texts);
}

// Times are copied out first: entries lie scattered, and a sort looks at each many times. A time that is no number
// needs a position too: without a total order the sort is undefined.
std::vector<std::uint32_t> orderByTime(const EntryReferences& entries) {
    std::vector<std::pair<double, std::uint32_t>> times;
    times.reserve(entries.size());
    for (const auto* entry : entries)
        times.emplace_back(entry->modified.seconds, static_cast<std::uint32_t>(times.size()));
    std::ranges::stable_sort(times, [](const auto& a, const auto& b) { return std::weak_order(a.first, b.first) < 0; });
    std::vector<std::uint32_t> order(entries.size());
    std::ranges::transform(times, order.begin(), [](const auto& timed) { return timed.second; });
    return order;
}

}  // namespace

std::string_view EntrySort::rawValue(Column column) noexcept {
    return namesOf(column).rawValue;
}

std::optional<EntrySort::Column> EntrySort::columnFromText(std::string_view text) {
    const auto* found = std::ranges::find(allCases, text, rawValue);
    return found == allCases.end() ? std::nullopt : std::optional(*found);
}

std::string_view EntrySort::label(Column column) noexcept {
    return namesOf(column).label;
}

EntryReferences EntrySort::apply(EntryReferences entries) const {
    if (column == Column::manual)
        return entries;
    EntryReferences sorted(entries.size());
    std::ranges::transform(order(entries), sorted.begin(), [&](std::uint32_t index) { return entries[index]; });
    if (!ascending)
        std::ranges::reverse(sorted);
    return sorted;
}

std::vector<std::uint32_t> EntrySort::order(const EntryReferences& entries) const {
    if (column == Column::modified)
        return orderByTime(entries);
    if (column != Column::manual)
        return orderByText(entries, fieldOf(column));
    std::vector<std::uint32_t> asTheyCome(entries.size());
    std::iota(asTheyCome.begin(), asTheyCome.end(), 0U);
    return asTheyCome;
}

std::weak_ordering EntrySort::compare(Column column, const KdbxEntry& a, const KdbxEntry& b) {
    if (column == Column::manual)
        return std::weak_ordering::equivalent;
    if (column == Column::modified)
        return std::weak_order(a.modified.seconds, b.modified.seconds);
    return Collation::ofUser().compare(a.*fieldOf(column), b.*fieldOf(column));
}

void EntrySort::toggle(Column chosen) noexcept {
    ascending = chosen != column || !ascending;
    column = chosen;
}
