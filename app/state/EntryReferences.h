// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

#include <vector>

/// Entries in an order, borrowed from a vault: valid for as long as that vault is unchanged.
using EntryReferences = std::vector<const KdbxEntry*>;

/// The group's own entries in stored order.
[[nodiscard]] inline EntryReferences entriesOf(const KdbxGroup& group) {
    EntryReferences entries;
    entries.reserve(group.entries.size());
    for (const auto& entry : group.entries)
        entries.push_back(&entry);
    return entries;
}
