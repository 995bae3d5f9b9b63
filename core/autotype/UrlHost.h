// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

/// The host of a URL (RFC 3986, section 3.2.2), borrowed and as it is written, the brackets of an address included. It
/// may be empty, as in "file:///x". Nothing where the text names none, or is no URL.
[[nodiscard]] std::optional<std::string_view> urlHost(std::string_view url);
