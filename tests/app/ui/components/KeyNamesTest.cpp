// SPDX-License-Identifier: MIT
#include "app/ui/components/KeyNames.h"

#include "tests/support/FakeDesktop.h"

using namespace KeyNames;

namespace {

using Modifiers = KeyboardLayout::Modifiers;

/// Of Turkish layouts, the keys at which they differ from the US one and from each other.
FakeLayout::Table turkishF() {
    return {{{0, Modifiers::none}, "u"},  {{0, Modifiers::shift}, "U"}, {{1, Modifiers::none}, "i"},
            {{1, Modifiers::shift}, "İ"}, {{3, Modifiers::none}, "a"},  {{3, Modifiers::shift}, "A"},
            {{15, Modifiers::none}, "ı"}, {{15, Modifiers::shift}, "I"}};
}

}  // namespace

TEST(KeyNamesTest, nameModifiersInTheDesktopsWordsAndOrder) {
    FakeLayout layout;

    EXPECT_EQ(describe({}, layout), "Ctrl+Alt+A");
    EXPECT_EQ(describe({.keyCode = 0, .modifiers = 0x1B00}, layout), "Super+Ctrl+Alt+Shift+A");
    EXPECT_EQ(describe({.keyCode = 7, .modifiers = hotKeyControl}, layout), "Super+X");
    EXPECT_EQ(describe({.keyCode = 7, .modifiers = 0}, layout), "X");
}

TEST(KeyNamesTest, nameTheLetterThatIsAtTheKeysPlace) {
    FakeLayout layout;
    EXPECT_EQ(describe({.keyCode = 34, .modifiers = hotKeyCommand}, layout), "Ctrl+I");

    layout.select(turkishF());

    EXPECT_EQ(describe({}, layout), "Ctrl+Alt+U");
    EXPECT_EQ(describe({.keyCode = 3, .modifiers = hotKeyCommand}, layout), "Ctrl+A");
    EXPECT_EQ(describe({.keyCode = 1, .modifiers = hotKeyCommand}, layout), "Ctrl+İ");
    EXPECT_EQ(describe({.keyCode = 15, .modifiers = hotKeyCommand}, layout), "Ctrl+I");
}

TEST(KeyNamesTest, nameLettersThatHaveNoSingleCapitalAndSignsAsTheyAre) {
    FakeLayout layout;
    layout.select({{{27, Modifiers::none}, "ß"},
                   {{27, Modifiers::shift}, "?"},
                   {{18, Modifiers::none}, "&"},
                   {{18, Modifiers::shift}, "1"}});

    EXPECT_EQ(describe({.keyCode = 27, .modifiers = hotKeyCommand}, layout), "Ctrl+ß");
    EXPECT_EQ(describe({.keyCode = 18, .modifiers = hotKeyCommand}, layout), "Ctrl+&");
}

TEST(KeyNamesTest, nameKeysThatGiveNoText) {
    FakeLayout layout;
    for (const auto& [code, name] : {std::pair(36U, "Enter"), std::pair(48U, "Tab"), std::pair(49U, "Boşluk"),
                                     std::pair(51U, "Backspace"), std::pair(117U, "Delete"), std::pair(122U, "F1"),
                                     std::pair(90U, "F20"), std::pair(126U, "Yukarı"), std::pair(82U, "Sayısal 0")})
        EXPECT_EQ(describe({.keyCode = code, .modifiers = hotKeyCommand}, layout), std::string("Ctrl+") + name);
}

TEST(KeyNamesTest, nameKeysByTheUSLayoutWhereTheLayoutSaysNothing) {
    FakeLayout layout;
    layout.available = false;
    EXPECT_EQ(describe({}, layout), "Ctrl+Alt+A");

    layout.available = true;
    layout.select({});
    EXPECT_EQ(describe({}, layout), "Ctrl+Alt+A") << "a dead key, for example";
    EXPECT_EQ(describe({.keyCode = 93, .modifiers = hotKeyCommand}, layout), "Ctrl+#93");
    EXPECT_EQ(describe({.keyCode = 70'000, .modifiers = hotKeyCommand}, layout), "Ctrl+#70000");
}

TEST(KeyNamesTest, readTheSignsOfAText) {
    EXPECT_EQ(ofSigns("Yeni kayıt (⌘I)"), "Ctrl+I");
    EXPECT_EQ(ofSigns("Yeni grup (⇧⌘G)"), "Ctrl+Shift+G");
    EXPECT_EQ(ofSigns("Varsayılana dön  (⌘⌥A)"), "Ctrl+Alt+A");
    EXPECT_EQ(ofSigns("⌃⌥⇧⌘Boşluk"), "Super+Ctrl+Alt+Shift+Boşluk");
    EXPECT_EQ(ofSigns("Kapat"), "");
    EXPECT_EQ(ofSigns(""), "");
}

TEST(KeyNamesTest, standInPlaceOfTheSignsOfAText) {
    EXPECT_EQ(withoutSigns("Yeni grup (⇧⌘G)", "Ctrl+Shift+G"), "Yeni grup (Ctrl+Shift+G)");
    EXPECT_EQ(withoutSigns("Varsayılana dön  (⌘⌥A)", "Ctrl+Alt+U"), "Varsayılana dön  (Ctrl+Alt+U)");
    EXPECT_EQ(withoutSigns("⌥⌘A ile", "Ctrl+Alt+A"), "Ctrl+Alt+A ile");
    EXPECT_EQ(withoutSigns("Kapat", "Ctrl+W"), "Kapat");
}
