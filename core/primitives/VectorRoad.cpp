// SPDX-License-Identifier: MIT
#include "core/primitives/VectorRoad.h"

bool canTake(VectorRoad road) noexcept {
#ifdef __x86_64__
    switch (road) {
        case VectorRoad::portable:
            return true;
        case VectorRoad::avx2:
            return __builtin_cpu_supports("avx2") != 0;
        case VectorRoad::avx512:
            return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
                   __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw");
    }
#endif
    return road == VectorRoad::portable;
}

VectorRoad widestRoad() noexcept {
    static const VectorRoad widest = canTake(VectorRoad::avx512) ? VectorRoad::avx512
                                     : canTake(VectorRoad::avx2) ? VectorRoad::avx2
                                                                 : VectorRoad::portable;
    return widest;
}

std::vector<VectorRoad> passableRoads() {
    std::vector<VectorRoad> roads;
    for (const auto road : {VectorRoad::portable, VectorRoad::avx2, VectorRoad::avx512})
        if (canTake(road))
            roads.push_back(road);
    return roads;
}
