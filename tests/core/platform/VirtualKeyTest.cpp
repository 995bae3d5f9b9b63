// SPDX-License-Identifier: MIT
#include "core/platform/VirtualKey.h"

#include <gtest/gtest.h>

#include <linux/input-event-codes.h>

#include <algorithm>
#include <set>
#include <string>

namespace {

TEST(VirtualKeyTest, isOfThePlaceThatAKeyHasOnAUSKeyboard) {
    EXPECT_EQ(VirtualKey::evdevCode(0), KEY_A);
    EXPECT_EQ(VirtualKey::evdevCode(10), KEY_102ND);
    EXPECT_EQ(VirtualKey::evdevCode(36), KEY_ENTER);
    EXPECT_EQ(VirtualKey::evdevCode(48), KEY_TAB);
    EXPECT_EQ(VirtualKey::evdevCode(50), KEY_GRAVE);
    EXPECT_EQ(VirtualKey::evdevCode(51), KEY_BACKSPACE);
    EXPECT_EQ(VirtualKey::evdevCode(53), KEY_ESC);
    EXPECT_EQ(VirtualKey::evdevCode(55), KEY_LEFTMETA);
    EXPECT_EQ(VirtualKey::evdevCode(61), KEY_RIGHTALT);
    EXPECT_EQ(VirtualKey::evdevCode(114), KEY_INSERT);
    EXPECT_EQ(VirtualKey::evdevCode(117), KEY_DELETE);
    EXPECT_EQ(VirtualKey::evdevCode(122), KEY_F1);
    EXPECT_EQ(VirtualKey::evdevCode(126), KEY_UP);
}

TEST(VirtualKeyTest, hasAKeyForAHundredAndNineteenCodes) {
    std::set<std::uint16_t> keys;
    for (std::uint32_t code = 0; code < 128; ++code)
        if (const auto evdev = VirtualKey::evdevCode(code))
            keys.insert(*evdev);
    EXPECT_EQ(keys.size(), 119U);
    for (const std::uint32_t code : {52U, 63U, 66U, 68U, 70U, 77U, 108U, 112U, 127U, 128U, 0xFFFFFFFFU})
        EXPECT_EQ(VirtualKey::evdevCode(code), std::nullopt) << code;
}

TEST(VirtualKeyTest, leadsBackFromTheKey) {
    for (std::uint32_t code = 0; code < 128; ++code)
        if (const auto evdev = VirtualKey::evdevCode(code)) {
            EXPECT_EQ(VirtualKey::ofEvdevCode(*evdev), code);
        }
    EXPECT_EQ(VirtualKey::ofEvdevCode(0), std::nullopt);
    EXPECT_EQ(VirtualKey::ofEvdevCode(KEY_SYSRQ), std::nullopt) << "Print Screen";
    EXPECT_EQ(VirtualKey::ofEvdevCode(0x10000 + KEY_A), std::nullopt);
}

TEST(VirtualKeyTest, hasTheLabelOfAUSKeyboardAndLeadsBackFromIt) {
    EXPECT_EQ(VirtualKey::usLabel(0), 'A');
    EXPECT_EQ(VirtualKey::usLabel(29), '0');
    EXPECT_EQ(VirtualKey::usLabel(50), '`');
    std::string labels;
    for (std::uint32_t code = 0; code < 300; ++code)
        if (const char label = VirtualKey::usLabel(code)) {
            labels += label;
            EXPECT_EQ(VirtualKey::ofUSLabel(label), code);
        }
    std::ranges::sort(labels);
    EXPECT_EQ(labels, "',-./0123456789;=ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]`");
    EXPECT_EQ(VirtualKey::ofUSLabel('a'), std::nullopt);
    EXPECT_EQ(VirtualKey::ofUSLabel('\0'), std::nullopt);
}

TEST(VirtualKeyTest, countsTheFunctionKeys) {
    EXPECT_EQ(VirtualKey::functionNumber(122), 1U);
    EXPECT_EQ(VirtualKey::functionNumber(111), 12U);
    EXPECT_EQ(VirtualKey::functionNumber(90), 20U);
    EXPECT_EQ(VirtualKey::functionNumber(0), std::nullopt);
    EXPECT_EQ(VirtualKey::functionNumber(0x10000 + 122), std::nullopt);
}

}  // namespace
