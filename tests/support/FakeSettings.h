// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/SettingsStore.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// Settings in memory.
class FakeSettings final : public SettingsStore {
public:
    std::map<std::string, SettingsValue, std::less<>> values;
    bool isWritable = true;

    std::optional<SettingsValue> value(std::string_view key) const override {
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    bool setValue(std::string_view key, std::optional<SettingsValue> value) override {
        if (!isWritable)
            return false;
        values.erase(std::string(key));
        if (value)
            values.emplace(std::string(key), std::move(*value));
        return true;
    }
};
