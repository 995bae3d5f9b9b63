// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

/// The widths in which the hot loops are written, from the narrowest to the widest. All give the same bytes.
enum class VectorRoad : std::uint8_t {
    portable,
    avx2,
    avx512,  // with the F, VL, DQ and BW parts
};

/// Whether this processor, and the operating system under it, can take a road.
[[nodiscard]] bool canTake(VectorRoad road) noexcept;

/// The widest road that can be taken. Asked once, then remembered.
[[nodiscard]] VectorRoad widestRoad() noexcept;

/// Every road that can be taken, `portable` first.
[[nodiscard]] std::vector<VectorRoad> passableRoads();
