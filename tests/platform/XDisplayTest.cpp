// SPDX-License-Identifier: MIT
#include "platform/x11/XDisplay.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

TEST(XDisplayTest, aDisplayThatIsNotThereCannotBeOpened) {
    setenv("DISPLAY", ":4711", 1);
    EXPECT_FALSE(XDisplay::canBeOpened());
    unsetenv("DISPLAY");
    EXPECT_FALSE(XDisplay::canBeOpened());
}

}  // namespace
