// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/HotKeys.h"

#include <cstdint>
#include <string>

/// Hot keys as the settings show them: by the US layout, whatever layout is in use.
namespace HotKeyFormatter {

/// The modifiers' signs in the order Control, Option, Shift, Command, then the key's name: "⌥⌘A".
[[nodiscard]] std::string describe(const HotKey& hotKey);

/// The stored form of the `KeyFlag` bits of an event. Others count for nothing.
[[nodiscard]] std::uint32_t carbonModifiers(std::uint64_t eventFlags) noexcept;

}  // namespace HotKeyFormatter
