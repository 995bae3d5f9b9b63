// SPDX-License-Identifier: MIT
#include "platform/qt/MotionSetting.h"

#include "tests/platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

class MotionSettingTest : public ::testing::Test {
protected:
    TemporaryFolder folder;

    MotionSettingTest() {
        unsetenv("DISPLAY");
        setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
    }
    ~MotionSettingTest() override { unsetenv("XDG_CONFIG_HOME"); }

    void writeSettings(const std::string& text) { writeFile(folder / "kdeglobals", text); }
};

TEST_F(MotionSettingTest, withoutAnyDesktopThingsMove) {
    EXPECT_FALSE(MotionSetting::isReduced());
}

TEST_F(MotionSettingTest, animationsThatTakeNoTimeAreReducedMotion) {
    writeSettings("[General]\nColorScheme=BreezeDark\n\n[KDE]\nAnimationDurationFactor=0\n");
    EXPECT_TRUE(MotionSetting::isReduced());
}

TEST_F(MotionSettingTest, slowOrQuickAnimationsStay) {
    for (const auto* factor : {"1", "0.25", "2", "", "hiç"}) {
        writeSettings(std::string("[KDE]\nAnimationDurationFactor=") + factor + "\n");
        EXPECT_FALSE(MotionSetting::isReduced()) << factor;
    }
}

}  // namespace
