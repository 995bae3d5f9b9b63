// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

/// What can be kept under a settings key. The kinds stay apart: a stored text is never read as a boolean.
using SettingsScalar = std::variant<bool, std::int64_t, double, std::string, Bytes>;
using SettingsDictionary = std::map<std::string, SettingsScalar>;
using SettingsValue = std::variant<bool, std::int64_t, double, std::string, Bytes, SettingsDictionary>;

/// The user's settings, kept between launches. Never holds a secret.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    /// The stored value, or nothing.
    [[nodiscard]] virtual std::optional<SettingsValue> value(std::string_view key) const = 0;

    /// Stores a value at once; nothing removes the key. Whether it is stored: a store that cannot be written stays as
    /// it was.
    virtual bool setValue(std::string_view key, std::optional<SettingsValue> value) = 0;
};
