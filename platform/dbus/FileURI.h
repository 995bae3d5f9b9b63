// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// Paths as desktops pass them on (RFC 8089). A path is bytes, which need not be text: all but plain characters are
/// encoded, so that each path comes through.
namespace FileURI {

[[nodiscard]] std::string of(const std::filesystem::path& absolute);

/// The path of a file on this machine, also where it was given as a bare absolute path; nothing for anything else.
[[nodiscard]] std::optional<std::filesystem::path> path(std::string_view uri);

}  // namespace FileURI
