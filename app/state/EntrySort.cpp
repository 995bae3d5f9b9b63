// SPDX-License-Identifier: MIT
#include "app/state/EntrySort.h"

#include "core/primitives/Overloaded.h"
#include "core/text/Collation.h"

#include <algorithm>
#include <compare>
#include <iterator>
#include <numeric>
#include <utility>
#include <variant>

namespace {

// Entries lie scattered: those that are read so many steps later are fetched now.
constexpr std::size_t ahead = 16;

/// What there is to know of a column. The manual one compares nothing.
struct ColumnRow {
    std::string_view rawValue;
    std::string_view label;
    std::variant<std::monostate, std::string KdbxEntry::*, Timestamp KdbxEntry::*> field{};
};

// In the order of the enumeration.
constexpr ColumnRow rows[]{
    {.rawValue = "manual", .label = "Kendi sıram"},
    {.rawValue = "title", .label = "Başlık", .field = &KdbxEntry::title},
    {.rawValue = "username", .label = "Kullanıcı", .field = &KdbxEntry::username},
    {.rawValue = "url", .label = "Adres", .field = &KdbxEntry::url},
    {.rawValue = "modified", .label = "Değiştirilme", .field = &KdbxEntry::modified},
};
static_assert(std::size(rows) == EntrySort::allCases.size());

const ColumnRow& rowOf(EntrySort::Column column) noexcept {
    return rows[static_cast<std::size_t>(column)];
}

std::vector<std::uint32_t> orderByNothing(const EntryReferences& entries) {
    std::vector<std::uint32_t> asTheyCome(entries.size());
    std::iota(asTheyCome.begin(), asTheyCome.end(), 0U);
    return asTheyCome;
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
std::vector<std::uint32_t> orderByTime(const EntryReferences& entries, Timestamp KdbxEntry::*field) {
    std::vector<std::pair<double, std::uint32_t>> times;
    times.reserve(entries.size());
    for (const auto* entry : entries)
        times.emplace_back((entry->*field).seconds, static_cast<std::uint32_t>(times.size()));
    std::ranges::stable_sort(times, [](const auto& a, const auto& b) { return std::weak_order(a.first, b.first) < 0; });
    std::vector<std::uint32_t> order(entries.size());
    std::ranges::transform(times, order.begin(), [](const auto& timed) { return timed.second; });
    return order;
}

}  // namespace

std::string_view EntrySort::rawValue(Column column) noexcept {
    return rowOf(column).rawValue;
}

std::optional<EntrySort::Column> EntrySort::columnFromText(std::string_view text) {
    const auto* found = std::ranges::find(allCases, text, rawValue);
    return found == allCases.end() ? std::nullopt : std::optional(*found);
}

std::string_view EntrySort::label(Column column) noexcept {
    return rowOf(column).label;
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
    return std::visit(Overloaded{
                          [&](std::monostate) { return orderByNothing(entries); },
                          [&](std::string KdbxEntry::*text) { return orderByText(entries, text); },
                          [&](Timestamp KdbxEntry::*time) { return orderByTime(entries, time); },
                      },
                      rowOf(column).field);
}

std::weak_ordering EntrySort::compare(Column column, const KdbxEntry& a, const KdbxEntry& b) {
    return std::visit(
        Overloaded{
            [](std::monostate) { return std::weak_ordering::equivalent; },
            [&](std::string KdbxEntry::*text) { return Collation::ofUser().compare(a.*text, b.*text); },
            [&](Timestamp KdbxEntry::*time) { return std::weak_order((a.*time).seconds, (b.*time).seconds); },
        },
        rowOf(column).field);
}

void EntrySort::toggle(Column chosen) noexcept {
    ascending = chosen != column || !ascending;
    column = chosen;
}
