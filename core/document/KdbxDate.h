// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/Timestamp.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The two forms of a time in the document: ISO 8601 text, and since KDBX 4 seconds from the year 1 in base64.
namespace KdbxDate {

/// 0001-01-01T00:00:00Z, from which KDBX 4 counts, in the proleptic Gregorian calendar (ISO 8601).
inline constexpr Timestamp epoch{-62135596800.0};

/// The binary form for a `major` of 4 or more, else the ISO form.
[[nodiscard]] std::string encode(Timestamp date, std::uint16_t major);

/// The binary form: whole seconds from `epoch`, halves away from zero. A time that does not fit is a precondition.
[[nodiscard]] std::string base64(Timestamp date);

/// "yyyy-MM-ddTHH:mm:ssZ".
[[nodiscard]] std::string iso8601(Timestamp date);

/// A time in either form, which its characters show; none if it is neither.
[[nodiscard]] std::optional<Timestamp> parse(std::string_view text);

}  // namespace KdbxDate
