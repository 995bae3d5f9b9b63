// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <optional>

/// The failure of this type that an operation throws; none where it succeeds. Failures of other types pass through.
template <class Error, std::invocable Operation>
std::optional<Error> thrown(Operation operation) {
    try {
        static_cast<void>(operation());
    } catch (const Error& error) {
        return error;
    }
    return std::nullopt;
}
