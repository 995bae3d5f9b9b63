// SPDX-License-Identifier: MIT
#include "core/primitives/Precondition.h"

#include <cstdio>
#include <cstdlib>

void preconditionFailed(const char* condition, const char* file, int line) noexcept {
    std::fprintf(stderr, "%s:%d: precondition failed: %s\n", file, line, condition);
    std::abort();
}
