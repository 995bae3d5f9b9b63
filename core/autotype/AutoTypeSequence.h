// SPDX-License-Identifier: MIT
#pragma once

#include "core/autotype/AutoTypeAction.h"
#include "core/model/KdbxDatabase.h"

#include <string_view>
#include <vector>

/// The small language that says what to type for an entry: literal characters, and tokens in braces for the entry's
/// fields, named keys, pauses and the emptying of a field.
namespace AutoTypeSequence {

/// What is typed where neither the entry nor its groups nor the user say otherwise.
inline constexpr std::string_view defaultSequence = "{USERNAME}{TAB}{PASSWORD}{ENTER}";

/// The actions of a sequence for an entry, its fields put in: the list holds the plain password, so it is made just
/// before typing and dropped just after. Never fails: what is not understood is typed as it is written.
[[nodiscard]] std::vector<AutoTypeAction> parse(std::string_view sequence, const KdbxEntry& entry);

}  // namespace AutoTypeSequence
