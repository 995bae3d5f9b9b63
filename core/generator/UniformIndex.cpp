// SPDX-License-Identifier: MIT
#include "core/generator/UniformIndex.h"

#include "core/primitives/Precondition.h"
#include "core/primitives/Random.h"

#include <array>
#include <bit>
#include <limits>

namespace {

// The largest value that is kept. A few values at the top are thrown away that could be kept: the bound stays the
// one that the program has always drawn by.
constexpr std::uint32_t largestKept(std::uint32_t count) {
    return std::numeric_limits<std::uint32_t>::max() / count * count - (count - 1);
}

}  // namespace

std::uint32_t systemRandom() {
    std::array<std::uint8_t, sizeof(std::uint32_t)> bytes{};
    fillRandom(bytes);
    const auto value = std::bit_cast<std::uint32_t>(bytes);
    secureWipe(bytes.data(), bytes.size());
    return value;
}

std::uint32_t uniformIndex(std::uint32_t count, const RandomSource& source) {
    precondition(count > 0);  // callers draw from tables and passwords that are not empty
    if (count == 1)
        return 0;
    const std::uint32_t limit = largestKept(count);
    std::uint32_t value = source();
    while (value > limit)
        value = source();
    return value % count;
}
