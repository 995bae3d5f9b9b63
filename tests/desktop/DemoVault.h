// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

#include <cstddef>

/// A vault with made-up content in Turkish, for pictures and for driving the program: 42 entries in nested groups,
/// among them all that is hard to show. The same at each call, identifiers aside. Its key derivation is cheap.
[[nodiscard]] KdbxDatabase demoVault();

/// The same, and behind its groups one with `count` further entries, each with texts of its own.
[[nodiscard]] KdbxDatabase demoVaultWithFurtherEntries(std::size_t count);
