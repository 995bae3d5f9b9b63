// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"
#include "tests/probe/Probe.h"

namespace Probe {

/// An entry from any of its fields, named and written as answers write them; the others have their start values.
/// Throws a Refusal where a field is of another kind.
[[nodiscard]] KdbxEntry entryOf(const Json& fields);

/// A group from any of its fields, in the same way.
[[nodiscard]] KdbxGroup groupOf(const Json& fields);

/// The argument of that name as `entryOf` gives it.
[[nodiscard]] KdbxEntry entry(const Json& request, const char* name);

}  // namespace Probe
