// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

#include <cstddef>
#include <string_view>

/// The text of an entry that a search looks through: title, user name, address, notes, tags, and names and values of
/// unprotected custom fields. Each ends with a space, which no word of a query has, so no word is found across two.
namespace SearchText {

/// The text as `Text::lowercased` gives it.
[[nodiscard]] std::string lowered(const KdbxEntry& entry);

/// How many bytes it has before it is lowered, which is close to what it has then.
[[nodiscard]] std::size_t size(const KdbxEntry& entry);

/// Adds the text that `lowered` gives to `texts`. Texts in Latin letters have a fast path, several times as fast.
void appendLowered(Bytes& texts, const KdbxEntry& entry);

}  // namespace SearchText
