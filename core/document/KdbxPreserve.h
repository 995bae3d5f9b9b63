// SPDX-License-Identifier: MIT
#pragma once

#include "core/text/Text.h"

#include <algorithm>
#include <array>
#include <string_view>

/// The wrappers in which the root group's `unknownXML` carries what has no group or entry of its own: the foreign
/// children of `Meta` and of `Root`, and the attachments. They exist in memory only and never reach a file.
namespace KdbxPreserve {

inline constexpr std::string_view meta = "BrenvikPreservedMeta";
inline constexpr std::string_view root = "BrenvikPreservedRoot";
inline constexpr std::string_view binaries = "BrenvikPreservedBinaries";

/// In the order in which they follow the root group's own foreign children.
inline constexpr std::array all{meta, root, binaries};

[[nodiscard]] inline bool isWrapper(std::string_view elementName) {
    return std::ranges::any_of(all, [&](auto name) { return Text::equal(name, elementName); });
}

}  // namespace KdbxPreserve
