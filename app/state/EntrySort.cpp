// SPDX-License-Identifier: MIT
#include "app/state/EntrySort.h"

std::string_view textValue(EntrySort::Column column) noexcept {
    switch (column) {
        case EntrySort::Column::manual:
            return "manual";
        case EntrySort::Column::title:
            return "title";
        case EntrySort::Column::username:
            return "username";
        case EntrySort::Column::url:
            return "url";
        case EntrySort::Column::modified:
            return "modified";
    }
    return {};
}

std::optional<EntrySort::Column> entrySortColumn(std::string_view text) {
    for (const auto column : allEntrySortColumns)
        if (textValue(column) == text)
            return column;
    return std::nullopt;
}
