// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

#include <vector>

/// Calls `visit` with each entry of the tree once, a group's own before those of its subgroups, in stored order.
/// Without recursion: a vault may be deeper than the stack.
template <class Visit>
void forEachEntry(const KdbxGroup& root, Visit visit) {
    std::vector<const KdbxGroup*> waiting{&root};
    while (!waiting.empty()) {
        const auto& group = *waiting.back();
        waiting.pop_back();
        for (const auto& entry : group.entries)
            visit(entry);
        for (auto index = group.groups.size(); index > 0; --index)
            waiting.push_back(&group.groups[index - 1]);
    }
}
