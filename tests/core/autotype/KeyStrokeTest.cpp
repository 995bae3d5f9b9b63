// SPDX-License-Identifier: MIT
#include "core/autotype/KeyStroke.h"

#include "core/platform/KeyboardEvents.h"
#include "tests/support/FakeDesktop.h"

using Modifiers = KeyboardLayout::Modifiers;

namespace {

std::optional<KeyStroke> find(FakeLayout::Table table, std::string_view character) {
    FakeLayout layout;
    layout.select(std::move(table));
    return findKeyStroke(layout, character);
}

}  // namespace

TEST(KeyStrokeTest, isFoundOnTheUSLayout) {
    EXPECT_EQ(find(FakeLayout::us(), "a"), (KeyStroke{0, 0}));
    EXPECT_EQ(find(FakeLayout::us(), "A"), (KeyStroke{0, 0x20000}));
    EXPECT_EQ(find(FakeLayout::us(), "@"), (KeyStroke{19, 0x20000}));
    EXPECT_EQ(find(FakeLayout::us(), " "), (KeyStroke{49, 0}));
    EXPECT_EQ(find(FakeLayout::us(), "\t"), (KeyStroke{48, 0}));
    EXPECT_EQ(find(FakeLayout::us(), "ş"), std::nullopt);
}

TEST(KeyStrokeTest, triesFewerModifiersFirstInAFixedOrder) {
    FakeLayout::Table table{{{9, Modifiers::shiftAndOption}, "x"}};
    EXPECT_EQ(find(table, "x"), (KeyStroke{9, 0xA0000}));

    table[{8, Modifiers::option}] = "x";
    EXPECT_EQ(find(table, "x"), (KeyStroke{8, 0x80000}));

    table[{16, Modifiers::shift}] = "x";
    EXPECT_EQ(find(table, "x"), (KeyStroke{16, 0x20000}));

    table[{127, Modifiers::none}] = "x";
    EXPECT_EQ(find(table, "x"), (KeyStroke{127, 0}));
}

TEST(KeyStrokeTest, takesTheLowestCode) {
    EXPECT_EQ(find({{{30, Modifiers::none}, "x"}, {{12, Modifiers::none}, "x"}}, "x"), (KeyStroke{12, 0}));
}

TEST(KeyStrokeTest, looksAtTheCodesBelow128Alone) {
    EXPECT_EQ(find({{{128, Modifiers::none}, "x"}}, "x"), std::nullopt);
}

TEST(KeyStrokeTest, prefersShiftAndTheNumberRowToTheKeypad) {
    EXPECT_EQ(find({{{83, Modifiers::none}, "1"}, {{18, Modifiers::shift}, "1"}}, "1"), (KeyStroke{18, 0x20000}));
    EXPECT_EQ(find({{{83, Modifiers::none}, "1"}, {{18, Modifiers::shiftAndOption}, "1"}}, "1"),
              (KeyStroke{18, 0xA0000}));
}

TEST(KeyStrokeTest, takesTheFirstKeyOfTheKeypadAsTheLastResort) {
    EXPECT_EQ(find({{{92, Modifiers::none}, "9"}, {{65, Modifiers::shift}, "9"}, {{91, Modifiers::none}, "9"}}, "9"),
              (KeyStroke{91, 0}));
}

TEST(KeyStrokeTest, countsEighteenKeysToTheKeypad) {
    const std::set<std::uint16_t> keypad{65, 67, 69, 71, 75, 76, 78, 81, 82, 83, 84, 85, 86, 87, 88, 89, 91, 92};
    for (std::uint16_t code = 0; code < 127; ++code) {
        const auto stroke = find({{{code, Modifiers::none}, "x"}, {{127, Modifiers::shift}, "x"}}, "x");
        EXPECT_EQ(stroke, keypad.contains(code) ? KeyStroke({127, 0x20000}) : KeyStroke({code, 0})) << code;
    }
}

TEST(KeyStrokeTest, comparesByCanonicalEquivalenceAndInFull) {
    EXPECT_EQ(find({{{41, Modifiers::none}, "ş"}}, "s\xCC\xA7"), (KeyStroke{41, 0}));
    EXPECT_EQ(find({{{41, Modifiers::none}, "s\xCC\xA7"}}, "ş"), (KeyStroke{41, 0}));
    EXPECT_EQ(find({{{41, Modifiers::none}, "sx"}}, "s"), std::nullopt);
}

TEST(KeyStrokeTest, isNotFoundWithoutALayout) {
    FakeLayout layout;
    layout.available = false;

    EXPECT_EQ(findKeyStroke(layout, "a"), std::nullopt);
    EXPECT_EQ(layout.translations, 0);
}

TEST(KeyStrokeTest, isNotFoundForNoCharacter) {
    EXPECT_EQ(find(FakeLayout::us(), ""), std::nullopt);
}

TEST(KeyStrokeTest, costsAtMost512Translations) {
    FakeLayout layout;

    EXPECT_EQ(findKeyStroke(layout, "ş"), std::nullopt);

    EXPECT_EQ(layout.translations, 512);
}
