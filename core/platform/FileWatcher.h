// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <optional>

/// Notices what any program does to one file.
class FileWatcher {
public:
    using Noticed = std::function<void()>;

    virtual ~FileWatcher() = default;

    /// From now on calls `noticed`, never within this call, when the file may have appeared, gone or changed, also with
    /// its disk: too often rather than too seldom. The file replaces the one before; with none, nothing is watched.
    virtual void watch(const std::optional<std::filesystem::path>& file, Noticed noticed) = 0;
};
