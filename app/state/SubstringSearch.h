// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

/// Looking for a few letters in megabytes of text.
namespace SubstringSearch {

/// Where `part` first occurs in `text` at `from` or behind it, else `npos`. Bytes are compared, which in UTF-8 finds
/// whole code points alone. Fast where occurrences are rare: it looks at many places at a time.
[[nodiscard]] std::size_t find(std::string_view text, std::string_view part, std::size_t from = 0);

}  // namespace SubstringSearch
