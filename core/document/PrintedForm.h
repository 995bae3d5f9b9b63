// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

/// Foreign elements that need no parsing to be written. Most of what a vault carries along comes out as it went in, and
/// there is much of it: each load and save of a vault adds three elements to every entry.
namespace PrintedForm {

/// The name of the element that `text` is, if parsing and printing it would give it back byte for byte. None if it
/// would not, and also where that takes a closer look: a secret to mask, names outside ASCII, deep nesting.
[[nodiscard]] std::optional<std::string_view> nameOf(std::string_view text);

}  // namespace PrintedForm
