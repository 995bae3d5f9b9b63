// SPDX-License-Identifier: MIT
#include "core/autotype/KeyCodes.h"

#include <gtest/gtest.h>

#include <linux/input-event-codes.h>

#include <set>

namespace {

TEST(KeyCodes, nameTheKeysOfAKeyboardByThePlaceOnAUsOne) {
    EXPECT_EQ(KeyCodes::evdevCode(0), KEY_A);
    EXPECT_EQ(KeyCodes::evdevCode(10), KEY_102ND);
    EXPECT_EQ(KeyCodes::evdevCode(36), KEY_ENTER);
    EXPECT_EQ(KeyCodes::evdevCode(48), KEY_TAB);
    EXPECT_EQ(KeyCodes::evdevCode(50), KEY_GRAVE);
    EXPECT_EQ(KeyCodes::evdevCode(51), KEY_BACKSPACE);
    EXPECT_EQ(KeyCodes::evdevCode(53), KEY_ESC);
    EXPECT_EQ(KeyCodes::evdevCode(55), KEY_LEFTMETA);
    EXPECT_EQ(KeyCodes::evdevCode(61), KEY_RIGHTALT);
    EXPECT_EQ(KeyCodes::evdevCode(114), KEY_INSERT);
    EXPECT_EQ(KeyCodes::evdevCode(117), KEY_DELETE);
    EXPECT_EQ(KeyCodes::evdevCode(122), KEY_F1);
    EXPECT_EQ(KeyCodes::evdevCode(126), KEY_UP);
}

TEST(KeyCodes, aHundredAndNineteenOfThemHaveAKey) {
    std::set<std::uint16_t> keys;
    for (std::uint32_t code = 0; code < 128; ++code)
        if (const auto evdev = KeyCodes::evdevCode(code))
            keys.insert(*evdev);
    EXPECT_EQ(keys.size(), 119U);
    for (const std::uint32_t code : {52U, 63U, 66U, 68U, 70U, 77U, 108U, 112U, 127U, 128U, 0xFFFFFFFFU})
        EXPECT_EQ(KeyCodes::evdevCode(code), std::nullopt) << code;
}

TEST(KeyCodes, leadBackFromTheKey) {
    for (std::uint32_t code = 0; code < 128; ++code)
        if (const auto evdev = KeyCodes::evdevCode(code)) {
            EXPECT_EQ(KeyCodes::keyCode(*evdev), code);
        }
    EXPECT_EQ(KeyCodes::keyCode(0), std::nullopt);
    EXPECT_EQ(KeyCodes::keyCode(KEY_SYSRQ), std::nullopt) << "Print Screen";
    EXPECT_EQ(KeyCodes::keyCode(0x10000 + KEY_A), std::nullopt);
}

}  // namespace
