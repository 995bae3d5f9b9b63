// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// The ways in which hot loops are written, each for what a processor has. All that a loop has give the same bytes.
enum class Implementation : std::uint8_t {
    portable,
    aesInstructions,
    avx2,
    avx512,  // with the F, VL, DQ and BW parts
};

/// Whether this processor, and the operating system under it, can run an implementation.
[[nodiscard]] bool isSupported(Implementation implementation) noexcept;

/// The supported one over the widest vectors. Asked once, then remembered.
[[nodiscard]] Implementation widestVectors() noexcept;
