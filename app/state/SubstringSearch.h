// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

/// Looking for a few letters in megabytes of text.
namespace SubstringSearch {

/// The first position of `part` in `text` from `from` on, else `npos`. Bytes are compared, which in UTF-8 finds only
/// whole code points. Fast if occurrences are rare, since it compares many positions at a time.
[[nodiscard]] std::size_t find(std::string_view text, std::string_view part, std::size_t from = 0);

}  // namespace SubstringSearch
