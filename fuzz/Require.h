// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>

/// Ends the fuzzer where a property does not hold, so that the input is kept.
inline void require(bool condition) {
    if (!condition)
        std::abort();
}
