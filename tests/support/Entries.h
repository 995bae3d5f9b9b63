// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

inline KdbxEntry entryTitled(std::string title) {
    KdbxEntry entry;
    entry.title = std::move(title);
    return entry;
}

inline KdbxGroup groupNamed(std::string name) {
    KdbxGroup group;
    group.name = std::move(name);
    return group;
}

/// The titles of entries, or of what points at entries, in their order.
template <class Entries>
std::vector<std::string> titlesOf(const Entries& entries) {
    std::vector<std::string> titles;
    for (const auto& entry : entries)
        if constexpr (std::is_pointer_v<std::remove_cvref_t<decltype(entry)>>)
            titles.push_back(entry->title);
        else
            titles.push_back(entry.title);
    return titles;
}

/// The titles of all entries of a group.
inline std::vector<std::string> titlesOf(const KdbxGroup& group) {
    return titlesOf(group.allEntries());
}
