// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

/// The settings that a desktop keeps for all programs on its X display (XSETTINGS, freedesktop.org).
namespace XSettings {

/// The integer of that name; none without a display, without a desktop that keeps settings, or without that one.
[[nodiscard]] std::optional<std::int32_t> integer(std::string_view name);

/// The same, in the property's bytes. They come from another program: malformed bytes have no settings.
[[nodiscard]] std::optional<std::int32_t> integerIn(std::span<const std::uint8_t> property, std::string_view name);

}  // namespace XSettings
