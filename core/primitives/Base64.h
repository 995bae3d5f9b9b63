// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <optional>
#include <string>

/// Base64 in the standard alphabet with padding and without line breaks (RFC 4648, section 4).
namespace Base64 {

[[nodiscard]] std::string encode(ByteView data);

/// The same, appended to a buffer.
void appendEncoded(Bytes& buffer, ByteView data);

/// Nothing where a character is foreign or the length or padding is wrong.
[[nodiscard]] std::optional<Bytes> decodeStrict(std::string_view text);

/// Characters outside the alphabet are passed over; what remains must be whole.
[[nodiscard]] std::optional<Bytes> decodeLenient(std::string_view text);

}  // namespace Base64
