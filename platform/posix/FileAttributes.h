// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/FileSystemCalls.h"

/// The extended attributes of a file, given on to the one that replaces it.
namespace FileAttributes {

struct Copied {
    int failure = 0;  // errno where one could not be set for want of room or by a fault of the disk
    /// Whether the mode of the old file says who may read the new one. Where an access list could not be carried over,
    /// the mode's bits for the group are those of the list's mask, and may grant the group more than it had.
    bool isAccessKnown = true;
};

/// Gives `to` what `from` has, and takes from it what it alone has. What may not be set, as the attributes of the
/// system's security modules, is left to the system. What cannot be read is left out: a vault is worth more than its
/// attributes.
[[nodiscard]] Copied copy(FileSystemCalls& calls, int from, int to);

}  // namespace FileAttributes
