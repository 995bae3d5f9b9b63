// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>

/// Where the random bits of a draw come from: each call gives 32 fresh ones.
using RandomSource = std::function<std::uint32_t()>;

/// 32 bits of the operating system's random source.
[[nodiscard]] std::uint32_t systemRandom();

/// An index below `count`, which is 1 or more. A count of 1 leaves the source alone; any other draws until a value is
/// at or below the bound.
[[nodiscard]] std::uint32_t uniformIndex(std::uint32_t count, const RandomSource& source);
