// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

#include <string>
#include <string_view>

/// Finds the entry that a window's title names. The title is prepared once for all entries.
class WindowMatcher {
public:
    explicit WindowMatcher(std::string_view windowTitle);

    /// Whether the title holds the entry's title, the host of its URL (or the whole text where it has none), or one of
    /// its window associations less their asterisks. Letter case doesn't count. An empty title holds nothing.
    [[nodiscard]] bool matches(const KdbxEntry& entry) const;

    /// The first match among the entries that want auto-type, in the order of `KdbxGroup::allEntries`; none is null.
    /// Borrowed from `root`.
    [[nodiscard]] const KdbxEntry* firstMatch(const KdbxGroup& root) const;

private:
    [[nodiscard]] bool titleHolds(std::string_view text) const;

    std::string m_title;  // lower-cased, canonically composed
};
