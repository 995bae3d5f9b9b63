// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

#include <cstddef>
#include <string_view>

/// What a search looks through of an entry: title, user name, address, notes, tags, and names and values of unprotected
/// custom fields. Each is closed by a space, which no word of a query holds: so no word is found across two of them.
namespace SearchText {

/// The text as `Text::lowercased` gives it.
[[nodiscard]] std::string lowered(const KdbxEntry& entry);

/// How many bytes it has before it is lowered, which is close to what it has then.
[[nodiscard]] std::size_t size(const KdbxEntry& entry);

/// Adds the same text as `lowered` gives to `texts`. Texts in Latin letters take a road of their own, several times as
/// fast.
void appendLowered(Bytes& texts, const KdbxEntry& entry);

}  // namespace SearchText
