// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/FileHandle.h"

#include <string>

/// The temporary files of a save: how they are named, and what becomes of one whose process was killed.
/// A save holds a lock on its temporary file, so that another process does not take it for a leftover.
namespace SaveLeftovers {

/// A name that no one can guess, by which a later save of `file` finds what this one left behind. Its length does not
/// depend on the file's, so that it fits wherever the file's name does.
[[nodiscard]] std::string temporaryName(const std::string& file);

/// Removes what killed saves of `file` left in its folder. Nothing that goes wrong here stops a save.
void remove(FileSystemCalls& calls, const FileHandle& folder, const std::string& file);

}  // namespace SaveLeftovers
