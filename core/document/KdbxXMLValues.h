// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/UUID.h"

#include <cstdint>
#include <optional>
#include <string_view>

/// Values of the document as text.
namespace KdbxXML {

/// A whole number in decimal digits with an optional sign, and nothing beside them. None where it does not fit.
[[nodiscard]] std::optional<std::int64_t> parseInteger(std::string_view text);

/// An identifier from base64 of its 16 bytes, without foreign characters.
[[nodiscard]] std::optional<UUID> parseUUID(std::string_view text);

}  // namespace KdbxXML
