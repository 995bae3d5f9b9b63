// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <optional>
#include <string>

/// What a failure says of itself; nothing where there was none.
inline std::optional<std::string> descriptionOf(const std::exception_ptr& failure) {
    if (!failure)
        return std::nullopt;
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& exception) {
        return exception.what();
    }
}
