// SPDX-License-Identifier: MIT
#include "app/state/EntrySort.h"

#include "core/text/Collation.h"

#include <algorithm>
#include <compare>
#include <utility>

namespace {

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

EntryReferences sortedByText(const EntryReferences& entries, std::string KdbxEntry::*field) {
    std::vector<std::string_view> texts(entries.size());
    std::ranges::transform(entries, texts.begin(),
                           [field](const KdbxEntry* entry) { return std::string_view(entry->*field); });
    EntryReferences sorted(entries.size());
    std::ranges::transform(Collation::ofUser().order(texts), sorted.begin(),
                           [&](std::uint32_t index) { return entries[index]; });
    return sorted;
}

// Times are copied out first: entries lie scattered, and a sort looks at each many times. A time that is no number
// must have a place too, or the sort would have no order to go by.
EntryReferences sortedByTime(const EntryReferences& entries) {
    std::vector<std::pair<double, const KdbxEntry*>> times(entries.size());
    std::ranges::transform(entries, times.begin(),
                           [](const KdbxEntry* entry) { return std::pair(entry->modified.seconds, entry); });
    std::ranges::stable_sort(times, [](const auto& a, const auto& b) { return std::weak_order(a.first, b.first) < 0; });
    EntryReferences sorted(entries.size());
    std::ranges::transform(times, sorted.begin(), [](const auto& timed) { return timed.second; });
    return sorted;
}

EntryReferences ascendingBy(EntrySort::Column column, const EntryReferences& entries) {
    switch (column) {
        case EntrySort::Column::title:
            return sortedByText(entries, &KdbxEntry::title);
        case EntrySort::Column::username:
            return sortedByText(entries, &KdbxEntry::username);
        case EntrySort::Column::url:
            return sortedByText(entries, &KdbxEntry::url);
        case EntrySort::Column::modified:
            return sortedByTime(entries);
        case EntrySort::Column::manual:
            break;
    }
    return entries;
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
    auto sorted = ascendingBy(column, entries);
    if (!ascending)
        std::ranges::reverse(sorted);
    return sorted;
}

void EntrySort::toggle(Column chosen) noexcept {
    ascending = chosen != column || !ascending;
    column = chosen;
}
