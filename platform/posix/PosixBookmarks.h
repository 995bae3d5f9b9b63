// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/Bookmarks.h"

/// A bookmark is a path and the identity of the file: device, inode and time of birth. By its identity a file is found
/// again that was renamed within its folder, unless it was replaced meanwhile, as a save does.
class PosixBookmarks final : public Bookmarks {
public:
    /// Nothing for a file that is not there.
    [[nodiscard]] std::optional<Bytes> bookmark(const std::filesystem::path& file) override;

    /// The path as it was where anything exists there; otherwise that of the renamed file, if one is found; otherwise
    /// again the path as it was. Nothing for a token that is none.
    [[nodiscard]] std::optional<std::filesystem::path> resolve(ByteView token) override;
};
