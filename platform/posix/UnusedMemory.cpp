// SPDX-License-Identifier: MIT
#include "platform/posix/UnusedMemory.h"

#include "core/primitives/Bytes.h"

#include <malloc.h>

#include <cstddef>
#include <cstdint>

namespace {

// Painting a window goes deepest, and not as deep as this.
constexpr std::size_t deepestStack = 512 * 1024;

/// Short texts remain in the frames of functions that have returned.
[[gnu::noinline]] void wipeStackOfEndedCalls() noexcept {
    std::uint8_t unused[deepestStack];
    secureWipe(unused, sizeof unused);
}

}  // namespace

void UnusedMemory::wipeStack() noexcept {
    wipeStackOfEndedCalls();
}

void UnusedMemory::giveBack() noexcept {
    wipeStack();
    malloc_trim(0);
}
