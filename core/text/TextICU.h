// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What ICU answers, for any text: the fast paths must agree with it. Ill-formed UTF-8 counts as repaired.
namespace TextICU {

/// The canonically composed form (NFC).
[[nodiscard]] std::string composed(std::string_view text);

/// Adds the text's characters (extended grapheme clusters) to `characters`.
void appendCharacters(std::vector<std::string_view>& characters, std::string_view text);

[[nodiscard]] std::string lowercased(std::string_view text);
[[nodiscard]] std::string uppercased(std::string_view text);

}  // namespace TextICU
