// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

/// How the entry list is ordered.
struct EntrySort {
    enum class Column : std::uint8_t { manual, title, username, url, modified };

    Column column = Column::title;
    bool ascending = true;

    bool operator==(const EntrySort&) const = default;
};

/// In the order of the sort menu.
inline constexpr std::array<EntrySort::Column, 5> allEntrySortColumns{
    EntrySort::Column::manual, EntrySort::Column::title, EntrySort::Column::username, EntrySort::Column::url,
    EntrySort::Column::modified};

/// The name under which a column is stored: "manual", "title", "username", "url" or "modified".
[[nodiscard]] std::string_view textValue(EntrySort::Column column) noexcept;

/// The column of a stored name, which must match to the letter.
[[nodiscard]] std::optional<EntrySort::Column> entrySortColumn(std::string_view textValue);
