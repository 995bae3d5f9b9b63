// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/SettingsStore.h"

#include <optional>

/// The unlocked window's size in points, as its user has made it.
struct WindowSize {
    int width;
    int height;
    bool isMaximised;  // to which the size is what it goes back to

    bool operator==(const WindowSize&) const = default;

    [[nodiscard]] SettingsDictionary dictionary() const;
    /// Nothing where a number is missing or is none that a window has.
    [[nodiscard]] static std::optional<WindowSize> of(const std::optional<SettingsDictionary>& stored);
};

/// The widths in points of the columns that the user has dragged; the third has the rest.
struct ColumnWidths {
    int groups;
    int entries;

    bool operator==(const ColumnWidths&) const = default;

    [[nodiscard]] SettingsDictionary dictionary() const;
    /// Nothing where a number is missing or is none that a column has.
    [[nodiscard]] static std::optional<ColumnWidths> of(const std::optional<SettingsDictionary>& stored);
};
