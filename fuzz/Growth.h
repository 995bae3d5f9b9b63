// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

/// Every round of writing and reading adds three empty elements to each entry: they are taken out before rounds are
/// compared.
inline void removeGrowth(KdbxEntry& entry) {
    std::erase_if(entry.unknownXML, [](const auto& text) {
        return text == "<ForegroundColor/>" || text == "<BackgroundColor/>" || text == "<OverrideURL/>";
    });
    for (std::size_t i = 0; i < entry.historyItems.size(); ++i)
        removeGrowth(entry.historyItems.mutableAt(i));
}

inline void removeGrowth(KdbxGroup& group) {
    for (std::size_t i = 0; i < group.entries.size(); ++i)
        removeGrowth(group.entries.mutableAt(i));
    for (std::size_t i = 0; i < group.groups.size(); ++i)
        removeGrowth(group.groups.mutableAt(i));
}
