// SPDX-License-Identifier: MIT
#include "core/primitives/Bytes.h"

#include <cstring>

void secureWipe(void* data, std::size_t size) noexcept {
    if (size > 0)
        explicit_bzero(data, size);
}

[[gnu::noinline]] void wipeUnusedStack() noexcept {
    std::uint8_t unused[4096];
    secureWipe(unused, sizeof unused);
}
