// SPDX-License-Identifier: MIT
#include "core/primitives/Bytes.h"

#include <cstring>

void secureWipe(void* data, std::size_t size) noexcept {
    if (size > 0)
        explicit_bzero(data, size);
}

bool constantTimeEquals(ByteView a, ByteView b) noexcept {
    if (a.size() != b.size())
        return false;
    std::uint8_t difference = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        difference = static_cast<std::uint8_t>(difference | (a[i] ^ b[i]));
    return difference == 0;
}

[[gnu::noinline]] void wipeUnusedStack() noexcept {
    std::uint8_t unused[4096];
    secureWipe(unused, sizeof unused);
}
