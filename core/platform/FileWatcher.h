// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <optional>

/// Notices what happens to one file, whoever does it.
class FileWatcher {
public:
    using Noticed = std::function<void()>;

    virtual ~FileWatcher() = default;

    /// From now on calls `noticed`, never within this call, when the file may have come, gone or changed: its disk too
    /// may come and go. It is called too often rather than too seldom. Takes the place of the file before; with none,
    /// nothing is watched.
    virtual void watch(const std::optional<std::filesystem::path>& file, Noticed noticed) = 0;
};
