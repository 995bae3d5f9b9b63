// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/EntryReferences.h"

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

/// How the entry list is ordered.
struct EntrySort {
    /// A new one comes with its row in the source, which has its names and the field that it compares.
    enum class Column : std::uint8_t { manual, title, username, url, modified };

    /// In the order of the sort menu.
    static constexpr std::array<Column, 5> allCases{Column::manual, Column::title, Column::username, Column::url,
                                                    Column::modified};

    Column column = Column::title;
    bool ascending = true;

    /// The name under which a column is stored.
    [[nodiscard]] static std::string_view rawValue(Column column) noexcept;

    /// The column of a stored name, which must match to the letter.
    [[nodiscard]] static std::optional<Column> columnFromText(std::string_view text);

    /// For the user, in Turkish.
    [[nodiscard]] static std::string_view label(Column column) noexcept;

    /// The entries in this order, texts by the user's collation. Ties keep their order; descending is the whole
    /// ascending list reversed, ties included. The manual order is the one in which the entries come, in either
    /// direction.
    [[nodiscard]] EntryReferences apply(EntryReferences entries) const;

    /// The indices of the entries in ascending order, whatever the direction.
    [[nodiscard]] std::vector<std::uint32_t> order(const EntryReferences& entries) const;

    /// Which of two entries comes first in ascending order; in the manual one neither.
    [[nodiscard]] static std::weak_ordering compare(Column column, const KdbxEntry& a, const KdbxEntry& b);

    /// Reverses the direction of the current column, or takes another one, ascending.
    void toggle(Column chosen) noexcept;

    friend bool operator==(const EntrySort&, const EntrySort&) = default;
};
