// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The URL that an entry's address opens: with "https://" before an address that names no scheme, unchanged if it
/// holds "://". None if that is no URL (RFC 3986, with the characters of other scripts as in RFC 3987).
[[nodiscard]] std::optional<std::string> openableURL(std::string_view address);
