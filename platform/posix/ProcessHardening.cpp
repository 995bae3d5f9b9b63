// SPDX-License-Identifier: MIT
#include "platform/posix/ProcessHardening.h"

#include <sys/prctl.h>
#include <sys/resource.h>

// Both, since a system's crash handler that dumps go to through a pipe does not look at the limit.
void ProcessHardening::keepMemoryPrivate() noexcept {
    constexpr rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
}
