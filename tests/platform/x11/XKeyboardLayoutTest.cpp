// SPDX-License-Identifier: MIT
#include "tests/platform/x11/KeyboardFixture.h"

#include "core/autotype/AutoTypeService.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeScheduler.h"

#include <xcb/xcb.h>

#include <array>
#include <sstream>
#include <string_view>

namespace {

using Modifiers = KeyboardLayout::Modifiers;

class XKeyboardLayoutTest : public KeyboardTest {
protected:
    void SetUp() override {
        KeyboardTest::SetUp();
        service.emplace(AutoTypeService::Desktop{
            .keyboard = *keyboard, .layout = *layout, .applications = applications, .scheduler = clock});
        service->startTrackingFrontmostApplication();
    }

    /// The code of a character's key, with an S for Shift and an O for AltGr; a dash where it has none.
    std::string stroke(std::string_view character) {
        const auto found = service->keyStroke(character);
        if (!found)
            return "-";
        auto text = std::to_string(found->code);
        if (found->flags != 0)
            text += '/';
        if ((found->flags & KeyFlag::shift) != 0)
            text += 'S';
        if ((found->flags & KeyFlag::option) != 0)
            text += 'O';
        return text;
    }

    /// The strokes of many, with spaces between them.
    std::string strokes(const std::vector<std::string_view>& characters) {
        std::string all;
        for (const auto character : characters)
            all += (all.empty() ? "" : " ") + stroke(character);
        return all;
    }

    /// The printable characters of ASCII that no key gives.
    std::string missing() {
        std::string characters;
        for (char character = ' '; character <= '~'; ++character)
            if (!service->keyStroke(std::string_view(&character, 1)))
                characters += character;
        return characters;
    }

    FakeScheduler clock;
    FakeApplications applications;
    std::optional<AutoTypeService> service;
};

const std::vector<std::string_view> characters{"@", "#", "€",  "ş", "ğ",  "ı", "I", "i", "İ", "{",
                                               "}", "~", "\\", "ß", "\"", "1", "a", "₺", "“"};

}  // namespace

TEST_F(XKeyboardLayoutTest, findsTheKeysOfTheUSLayout) {
    select({"us"});

    EXPECT_EQ(strokes(characters), "19/S 20/S - - - - 34/S 34 - 33/S 30/S 50/S 42 - 39/S 18 0 - -");
    EXPECT_EQ(missing(), "");
}

TEST_F(XKeyboardLayoutTest, findsTheKeysOfTheTurkishLayout) {
    select({"tr"});

    EXPECT_EQ(strokes(characters), "12/O 20/O 14/O 41 33 34 34/S 39 39/S 26/O 29/O 30/O 27/O 1/O 50 18 0 17/O 11/O");
    EXPECT_EQ(missing(), "");
}

TEST_F(XKeyboardLayoutTest, findsTheKeysOfTheTurkishFLayout) {
    select({"tr", "-variant", "f"});

    EXPECT_EQ(strokes(characters), "12/O 20/O 2/O 39 14 15 15/S 1 1/S 26/O 29/O 30/O 27/O - 19/S 18 3 4/O 8/O");
    EXPECT_EQ(missing(), "");
}

TEST_F(XKeyboardLayoutTest, findsTheKeysOfTheGermanLayout) {
    select({"de"});

    EXPECT_EQ(strokes(characters), "12/O 42 14/O - - 34/SO 34/S 34 - 26/O 29/O 30/O 27/O 27 19/S 18 0 - 11/O");
    EXPECT_EQ(missing(), "^`") << "both are dead there";
}

TEST_F(XKeyboardLayoutTest, findsTheKeysOfTheFrenchLayout) {
    select({"fr"});

    EXPECT_EQ(strokes(characters), "0/O 20/O 14/O - - 34/SO 34/S 34 - 21/O 24/O 50/S 28/O 1/O 20 18/S 12 - 11/O");
    EXPECT_EQ(missing(), "");
}

TEST_F(XKeyboardLayoutTest, findsTheKeysThatISOKeyboardsHave) {
    select({"de"});
    EXPECT_EQ(strokes({"<", ">", "|"}), "10 10/S 10/O");

    select({"tr"});
    EXPECT_EQ(strokes({"<", ">", "|", "é"}), "10 10/S 10/O 50/S");
    EXPECT_EQ(layout->translate(50, Modifiers::none), "\"") << "the key left of the 1";
}

TEST_F(XKeyboardLayoutTest, givesTheControlCharactersOfTheirKeys) {
    EXPECT_EQ(layout->translate(36, Modifiers::none), "\r");
    EXPECT_EQ(layout->translate(76, Modifiers::none), "\r");
    EXPECT_EQ(layout->translate(48, Modifiers::none), "\t");
    EXPECT_EQ(layout->translate(51, Modifiers::none), "\b");
    EXPECT_EQ(layout->translate(53, Modifiers::none), "\x1B");
    EXPECT_EQ(layout->translate(117, Modifiers::none), "\x7F");
    EXPECT_EQ(stroke("\t"), "48");
    EXPECT_EQ(stroke("\n"), "-");
}

TEST_F(XKeyboardLayoutTest, givesNothingForADeadKeyOrACodeThatNoKeyHas) {
    select({"de"});
    EXPECT_EQ(layout->translate(50, Modifiers::none), "");
    EXPECT_EQ(layout->translate(24, Modifiers::none), "");

    for (const std::uint16_t code : {52, 63, 66, 68, 70, 77, 108, 112, 127, 128, 255, 65535})
        EXPECT_EQ(layout->translate(code, Modifiers::none), "") << code;
    EXPECT_EQ(layout->translate(56, Modifiers::none), "");
    EXPECT_EQ(layout->translate(122, Modifiers::shift), "");
}

TEST_F(XKeyboardLayoutTest, givesWhatKeysGiveWithNoLockOn) {
    lock(XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2);
    connection->roundTrip();

    EXPECT_EQ(layout->translate(0, Modifiers::none), "a");
    EXPECT_EQ(layout->translate(0, Modifiers::shift), "A");
    EXPECT_EQ(layout->translate(83, Modifiers::none), "");
    EXPECT_EQ(layout->translate(83, Modifiers::shift), "");
    EXPECT_EQ(layout->translate(69, Modifiers::none), "+");
    EXPECT_EQ(stroke("+"), "24/S") << "the keypad's is the last resort";
}

TEST_F(XKeyboardLayoutTest, followsTheGroupThatIsActive) {
    select({"us,tr"});
    EXPECT_EQ(strokes({"i", "ğ", "#"}), "34 - 20/S");

    selectGroup(1);
    connection->roundTrip();
    EXPECT_EQ(strokes({"i", "ğ", "#"}), "39 33 20/O");

    selectGroup(0);
    connection->roundTrip();
    EXPECT_EQ(strokes({"i", "ğ", "#"}), "34 - 20/S");
}

TEST_F(XKeyboardLayoutTest, reportsAnotherLayoutAndAnotherGroup) {
    select({"us,tr"});
    int changes = 0;
    layout->observe([&] { ++changes; });

    selectGroup(1);
    connection->roundTrip();
    EXPECT_EQ(changes, 1);

    select({"fr"});
    EXPECT_GE(changes, 2);
    EXPECT_EQ(layout->translate(0, Modifiers::none), "q");
}

TEST_F(XKeyboardLayoutTest, reportsFromTheLoopAlone) {
    int changes = 0;
    layout->observe([&] { ++changes; });

    runOnDisplay("setxkbmap", {"tr"});

    EXPECT_TRUE(waitUntil([&] { return changes > 0; }));
    EXPECT_EQ(stroke("ğ"), "33");
}

TEST_F(XKeyboardLayoutTest, reportsAKeyThatIsGivenAnotherMeaning) {
    ASSERT_EQ(layout->translate(0, Modifiers::none), "a");
    int changes = 0;
    layout->observe([&] { ++changes; });

    runOnDisplay("xmodmap", {"-e", "keycode 38 = j J"});
    connection->roundTrip();

    EXPECT_GE(changes, 1);
    EXPECT_EQ(layout->translate(0, Modifiers::none), "j");
}

TEST_F(XKeyboardLayoutTest, reportsNothingOfLocksOfStrokesAndOfKeysThatNoCodeStandsFor) {
    Hands hands;
    hands.strike(38);
    connection->roundTrip();
    int changes = 0;
    layout->observe([&] { ++changes; });

    hands.press(50);
    hands.strike(38);
    hands.release(50);
    lock(XCB_MOD_MASK_LOCK);
    runOnDisplay("xmodmap", {"-e", "keycode 93 = U20BA U20BA"});
    connection->roundTrip();

    EXPECT_EQ(changes, 0);
}

TEST_F(XKeyboardLayoutTest, notifiesNoFormerObserver) {
    int changes = 0;
    layout->observe([&] { ++changes; });
    layout->observe({});

    select({"tr"});

    EXPECT_EQ(changes, 0);
    EXPECT_EQ(layout->translate(33, Modifiers::none), "ğ");
}

TEST_F(XKeyboardLayoutTest, isGoneWithItsServer) {
    ASSERT_TRUE(layout->isAvailable());

    display.stop();
    passTime(50);

    EXPECT_FALSE(layout->isAvailable());
    EXPECT_EQ(layout->translate(0, Modifiers::none), "");
    EXPECT_EQ(layout->modifierKey(KeyFlag::shift), std::nullopt);
}
