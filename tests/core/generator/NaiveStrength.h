// SPDX-License-Identifier: MIT
#pragma once

#include "core/generator/PasswordGenerator.h"

/// The strength estimate a second time, step by step and as slow as it likes, for comparison. It knows the letters of
/// ASCII and the few others that the tests use.
[[nodiscard]] PasswordGenerator::Strength naiveStrength(const std::string& password);
