// SPDX-License-Identifier: MIT
#include "app/state/HotKeyFormatter.h"

#include <map>

using HotKeyFormatter::carbonModifiers;
using HotKeyFormatter::describe;

TEST(HotKeyFormatterTest, describesTheDefault) {
    EXPECT_EQ(HotKey().keyCode, 0u);
    EXPECT_EQ(HotKey().modifiers, 0x900u);
    EXPECT_EQ(describe(HotKey()), "⌥⌘A");
}

TEST(HotKeyFormatterTest, writesTheModifiersInAFixedOrder) {
    EXPECT_EQ(describe({.keyCode = 0, .modifiers = 0x1B00}), "⌃⌥⇧⌘A");
    EXPECT_EQ(describe({.keyCode = 0, .modifiers = 0x1000}), "⌃A");
    EXPECT_EQ(describe({.keyCode = 0, .modifiers = 0x800}), "⌥A");
    EXPECT_EQ(describe({.keyCode = 0, .modifiers = 0x100}), "⌘A");
    EXPECT_EQ(describe({.keyCode = 49, .modifiers = 0x200}), "⇧Boşluk");
}

TEST(HotKeyFormatterTest, writesTheKeyAloneWithoutModifiers) {
    EXPECT_EQ(describe({.keyCode = 46, .modifiers = 0}), "M");
    EXPECT_EQ(describe({.keyCode = 46, .modifiers = 0x400}), "M");
}

TEST(HotKeyFormatterTest, namesTheKeysOfTheUSLayoutAndTheOthersByTheirCode) {
    const std::map<std::uint32_t, std::string> names{
        {0, "A"},     {1, "S"},     {2, "D"},    {3, "F"},   {4, "H"},   {5, "G"},   {6, "Z"},       {7, "X"},
        {8, "C"},     {9, "V"},     {11, "B"},   {12, "Q"},  {13, "W"},  {14, "E"},  {15, "R"},      {16, "Y"},
        {17, "T"},    {31, "O"},    {32, "U"},   {34, "I"},  {35, "P"},  {37, "L"},  {38, "J"},      {40, "K"},
        {45, "N"},    {46, "M"},    {18, "1"},   {19, "2"},  {20, "3"},  {21, "4"},  {22, "6"},      {23, "5"},
        {25, "9"},    {26, "7"},    {28, "8"},   {29, "0"},  {36, "⏎"},  {48, "⇥"},  {49, "Boşluk"}, {122, "F1"},
        {120, "F2"},  {99, "F3"},   {118, "F4"}, {96, "F5"}, {97, "F6"}, {98, "F7"}, {100, "F8"},    {101, "F9"},
        {109, "F10"}, {103, "F11"}, {111, "F12"}};
    for (std::uint32_t code = 0; code < 300; ++code) {
        const auto name = names.find(code);
        EXPECT_EQ(describe({.keyCode = code, .modifiers = 0}),
                  name == names.end() ? "#" + std::to_string(code) : name->second);
    }
    EXPECT_EQ(describe({.keyCode = 51, .modifiers = 0}), "#51");
    EXPECT_EQ(describe({.keyCode = 4294967295, .modifiers = 0}), "#4294967295");
}

TEST(HotKeyFormatterTest, turnsEventFlagsIntoTheStoredForm) {
    EXPECT_EQ(carbonModifiers(0x20000), 0x200u);
    EXPECT_EQ(carbonModifiers(0x40000), 0x1000u);
    EXPECT_EQ(carbonModifiers(0x80000), 0x800u);
    EXPECT_EQ(carbonModifiers(0x100000), 0x100u);
    EXPECT_EQ(carbonModifiers(0x1E0000), 0x1B00u);
}

TEST(HotKeyFormatterTest, passesOverOtherEventFlags) {
    EXPECT_EQ(carbonModifiers(~std::uint64_t{0x1E0000}), 0u);
    EXPECT_EQ(carbonModifiers(0x10000), 0u);  // Caps Lock
}
