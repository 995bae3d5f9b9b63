// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Which letters are digits of hexadecimal text.
enum class HexLetters : std::uint8_t { lower, upper };

/// Two digits a byte.
[[nodiscard]] std::string hexadecimal(ByteView bytes, HexLetters letters = HexLetters::lower);

/// A number in as few digits as it has, with lower-case letters.
[[nodiscard]] std::string hexadecimalNumber(std::uint32_t number);

/// The bytes of pairs of digits, with letters of either case; nothing for any other text.
[[nodiscard]] std::optional<Bytes> hexDecode(std::string_view text);
