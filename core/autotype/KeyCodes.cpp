// SPDX-License-Identifier: MIT
#include "core/autotype/KeyCodes.h"

#include <algorithm>
#include <array>

namespace KeyCodes {

namespace {

/// By virtual key code; 0 where there is no key.
// clang-format off
constexpr std::array<std::uint16_t, 128> evdevCodes{
    30, 31, 32, 33, 35, 34, 44, 45,  // from 0
    46, 47, 86, 48, 16, 17, 18, 19,  // from 8
    21, 20, 2, 3, 4, 5, 7, 6,  // from 16
    13, 10, 8, 12, 9, 11, 27, 24,  // from 24
    22, 26, 23, 25, 28, 38, 36, 40,  // from 32
    37, 39, 43, 51, 53, 49, 50, 52,  // from 40
    15, 57, 41, 14, 0, 1, 126, 125,  // from 48
    42, 58, 56, 29, 54, 100, 97, 0,  // from 56
    187, 83, 0, 55, 0, 78, 0, 69,  // from 64
    115, 114, 113, 98, 96, 0, 74, 188,  // from 72
    189, 117, 82, 79, 80, 81, 75, 76,  // from 80
    77, 71, 190, 72, 73, 124, 89, 121,  // from 88
    63, 64, 65, 61, 66, 67, 123, 87,  // from 96
    122, 183, 186, 184, 0, 68, 127, 88,  // from 104
    0, 185, 110, 102, 104, 111, 62, 107,  // from 112
    60, 109, 59, 105, 106, 108, 103, 0,  // from 120
};
// clang-format on

}  // namespace

std::optional<std::uint16_t> evdevCode(std::uint32_t keyCode) noexcept {
    if (keyCode >= evdevCodes.size() || evdevCodes[keyCode] == 0)
        return std::nullopt;
    return evdevCodes[keyCode];
}

std::optional<std::uint16_t> keyCode(std::uint32_t evdevCode) noexcept {
    if (evdevCode == 0)
        return std::nullopt;
    const auto* const found = std::ranges::find(evdevCodes, evdevCode);
    if (found == evdevCodes.end())
        return std::nullopt;
    return static_cast<std::uint16_t>(found - evdevCodes.begin());
}

}  // namespace KeyCodes
