// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

#include <string>

/// A vault as it is when it is made: the root and three groups for a start, no entries, the strongest settings.
[[nodiscard]] KdbxDatabase newVault(const std::string& name, Timestamp now);
