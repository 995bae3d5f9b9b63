// SPDX-License-Identifier: MIT
#include "core/primitives/Random.h"

#include <sys/random.h>

#include <cerrno>
#include <random>

namespace {

/// How many bytes the kernel gave; fewer than asked for only where it cannot serve.
std::size_t fillFromKernel(std::span<std::uint8_t> bytes) {
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const auto count = ::getrandom(bytes.data() + filled, bytes.size() - filled, 0);
        if (count > 0)
            filled += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            break;
    }
    return filled;
}

}  // namespace

void fillRandom(std::span<std::uint8_t> bytes) {
    const auto missing = bytes.subspan(fillFromKernel(bytes));
    if (missing.empty())
        return;
    std::random_device source;
    for (auto& byte : missing)
        byte = static_cast<std::uint8_t>(source());
}

Bytes randomBytes(std::size_t count) {
    Bytes bytes(count);
    fillRandom(bytes);
    return bytes;
}
