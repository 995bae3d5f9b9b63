// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace OldWindowTitle {

/// A text property in one of the encodings from before UTF-8, such as COMPOUND_TEXT, as UTF-8; empty where it cannot
/// be read. Borrows a connection of Xlib for the length of the call, which alone knows these encodings.
///
/// @param encoding the property's type, an atom of the display of the environment.
[[nodiscard]] std::string decoded(std::span<const std::uint8_t> value, std::uint32_t encoding);

}  // namespace OldWindowTitle
