// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// Brings a window of ours to the front on the display of the environment.
namespace XActivation {

/// Asks the window manager for it, in the name of what the user did: a manager refuses what seems older than what the
/// user has done since in another window. `startupID` is that of the launcher, which then need not wait any longer
/// (Startup Notification Protocol); without one the user has asked just now.
void activate(std::uint32_t window, std::string_view startupID);

/// The time of the display in a launcher's identifier, milliseconds; nothing where it holds none.
[[nodiscard]] std::optional<std::uint32_t> timeIn(std::string_view startupID);

}  // namespace XActivation
