// SPDX-License-Identifier: MIT
#pragma once

#include <compare>

/// A point in time: seconds from 1970-01-01T00:00:00Z, with fractions.
struct Timestamp {
    double seconds = 0;

    /// The system's clock.
    [[nodiscard]] static Timestamp now();

    friend auto operator<=>(const Timestamp&, const Timestamp&) = default;
};
