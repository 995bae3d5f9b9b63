// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

/// Folders of the program's own, below those of the XDG Base Directory Specification.
namespace PrivateFolder {

/// Makes the folder, with those on the way to it that are missing: each is its owner's alone from the first moment,
/// whatever the umask. Returns whether the folder was made just now; one that cannot be made shows where it is used.
bool make(const std::filesystem::path& folder);

}  // namespace PrivateFolder
