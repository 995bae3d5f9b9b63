// SPDX-License-Identifier: MIT
#include "app/state/WindowLayout.h"

#include <cstdint>
#include <string>

namespace {

constexpr std::int64_t largestSide = 32767;  // of a window that X can show

std::optional<int> side(const SettingsDictionary& stored, const std::string& key) {
    const auto found = stored.find(key);
    const auto* const number = found == stored.end() ? nullptr : std::get_if<std::int64_t>(&found->second);
    return number != nullptr && *number > 0 && *number <= largestSide ? std::optional(static_cast<int>(*number))
                                                                      : std::nullopt;
}

bool flag(const SettingsDictionary& stored, const std::string& key) {
    const auto found = stored.find(key);
    const auto* const isOn = found == stored.end() ? nullptr : std::get_if<bool>(&found->second);
    return isOn != nullptr && *isOn;
}

}  // namespace

SettingsDictionary WindowSize::dictionary() const {
    return {{"width", std::int64_t{width}}, {"height", std::int64_t{height}}, {"isMaximised", isMaximised}};
}

std::optional<WindowSize> WindowSize::of(const std::optional<SettingsDictionary>& stored) {
    const auto width = stored ? side(*stored, "width") : std::nullopt;
    const auto height = stored ? side(*stored, "height") : std::nullopt;
    if (!width || !height)
        return std::nullopt;
    return WindowSize{.width = *width, .height = *height, .isMaximised = flag(*stored, "isMaximised")};
}

SettingsDictionary ColumnWidths::dictionary() const {
    return {{"groups", std::int64_t{groups}}, {"entries", std::int64_t{entries}}};
}

std::optional<ColumnWidths> ColumnWidths::of(const std::optional<SettingsDictionary>& stored) {
    const auto groups = stored ? side(*stored, "groups") : std::nullopt;
    const auto entries = stored ? side(*stored, "entries") : std::nullopt;
    if (!groups || !entries)
        return std::nullopt;
    return ColumnWidths{.groups = *groups, .entries = *entries};
}
