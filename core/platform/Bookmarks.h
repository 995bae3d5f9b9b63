// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <filesystem>
#include <optional>

/// Durable tokens for chosen files.
class Bookmarks {
public:
    virtual ~Bookmarks() = default;

    /// A token that later resolves to the file, or nothing when none can be made.
    [[nodiscard]] virtual std::optional<Bytes> bookmark(const std::filesystem::path& file) = 0;

    /// The path that a token stands for, or nothing when it is unknown.
    [[nodiscard]] virtual std::optional<std::filesystem::path> resolve(ByteView token) = 0;
};
