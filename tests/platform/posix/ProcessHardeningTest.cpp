// SPDX-License-Identifier: MIT
#include "platform/posix/ProcessHardening.h"

#include <gtest/gtest.h>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// In a process of its own, since there is no way back.
TEST(ProcessHardeningTest, leavesNoDumpAndCannotBeTraced) {
    const auto child = fork();
    if (child == 0) {
        ProcessHardening::keepMemoryPrivate();
        rlimit limit{1, 1};
        const bool isLimited = getrlimit(RLIMIT_CORE, &limit) == 0 && limit.rlim_cur == 0 && limit.rlim_max == 0;
        _exit(isLimited && prctl(PR_GET_DUMPABLE) == 0 ? 7 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 7);
}

}  // namespace
