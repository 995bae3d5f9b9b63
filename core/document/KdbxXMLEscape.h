// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// What has to be done to a text before XML can carry it.
namespace KdbxXMLEscape {

/// Without the scalars that XML 1.0 cannot carry.
[[nodiscard]] std::string sanitise(std::string_view text);

/// `sanitise`, then "&", "<" and ">" escaped where they are whole characters: one that a combining mark follows is
/// another character and stays bare. The writer sees to those.
[[nodiscard]] std::string text(std::string_view text);

}  // namespace KdbxXMLEscape
