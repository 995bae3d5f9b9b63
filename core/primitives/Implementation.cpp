// SPDX-License-Identifier: MIT
#include "core/primitives/Implementation.h"

bool isSupported(Implementation implementation) noexcept {
#ifdef __x86_64__
    switch (implementation) {
        case Implementation::portable:
            return true;
        case Implementation::aesInstructions:
            return __builtin_cpu_supports("aes") != 0;
        case Implementation::avx2:
            return __builtin_cpu_supports("avx2") != 0;
        case Implementation::avx512:
            return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
                   __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw");
    }
#endif
    return implementation == Implementation::portable;
}

Implementation widestVectors() noexcept {
    static const auto widest = isSupported(Implementation::avx512) ? Implementation::avx512
                               : isSupported(Implementation::avx2) ? Implementation::avx2
                                                                   : Implementation::portable;
    return widest;
}
