// SPDX-License-Identifier: MIT
#include "platform/x11/SpareKeys.h"

#include "platform/x11/XKeycode.h"
#include "tests/platform/x11/KeyboardFixture.h"

#include <set>

namespace {

using namespace std::string_literals;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class SpareKeysTest : public KeyboardTest {
protected:
    void SetUp() override {
        KeyboardTest::SetUp();
        spare.emplace(*connection);
    }

    [[nodiscard]] std::vector<xcb_keycode_t> lentKeys() const {
        std::vector<xcb_keycode_t> keycodes;
        for (unsigned keycode = 8; keycode <= 255; ++keycode) {
            const auto found = symbols(static_cast<xcb_keycode_t>(keycode));
            if (!found.empty() && found[0] >= 0x01000100 && found[0] <= 0x0110FFFF)
                keycodes.push_back(static_cast<xcb_keycode_t>(keycode));
        }
        return keycodes;
    }

    /// Has all spare keys but as many taken by another program.
    void leave(int count) {
        QStringList taken;
        for (unsigned keycode = 9; keycode <= 255; ++keycode)
            if (symbols(static_cast<xcb_keycode_t>(keycode)).empty() && !XKeycode::hasKeyCode(keycode) && count-- <= 0)
                taken << "-e" << QString("keycode %1 = XF86Launch0").arg(keycode);
        runOnDisplay("xmodmap", taken);
    }

    std::optional<SpareKeys> spare;
};

}  // namespace

TEST_F(SpareKeysTest, standForACharacterWithAndWithoutShift) {
    const auto keycode = spare->lendTo(U'ğ');

    ASSERT_TRUE(keycode);
    EXPECT_THAT(symbols(*keycode), Each(0x0100011FU));
    EXPECT_GE(symbols(*keycode).size(), 2U);
    EXPECT_THAT(symbols(*spare->lendTo(U'😀')), Each(0x0101F600U));
    EXPECT_THAT(symbols(*spare->lendTo(U'é')), Each(0xE9U));
    EXPECT_THAT(symbols(*spare->lendTo(U'^')), Each(0x5EU));
}

TEST_F(SpareKeysTest, areNoKeysOfOurTables) {
    std::set<xcb_keycode_t> keycodes;
    for (char32_t character = U'一'; character < U'一' + 20; ++character) {
        const auto keycode = spare->lendTo(character);
        ASSERT_TRUE(keycode);
        EXPECT_FALSE(XKeycode::hasKeyCode(*keycode)) << int{*keycode};
        EXPECT_NE(*keycode, 8);
        keycodes.insert(*keycode);
    }
    EXPECT_GE(keycodes.size(), 10U) << "they go round";
}

TEST_F(SpareKeysTest, areStruckAgainForTheSameCharacter) {
    const auto first = spare->lendTo(U'日');
    const auto second = spare->lendTo(U'本');

    EXPECT_NE(first, second);
    EXPECT_EQ(spare->lendTo(U'日'), first);
    EXPECT_EQ(spare->lendTo(U'本'), second);
}

TEST_F(SpareKeysTest, goToTheCharacterThatHasWaitedLongest) {
    leave(3);
    const auto first = spare->lendTo(U'日');
    const auto second = spare->lendTo(U'本');
    const auto third = spare->lendTo(U'語');
    EXPECT_EQ(spare->lendTo(U'日'), first);

    EXPECT_EQ(spare->lendTo(U'人'), second);
    EXPECT_EQ(spare->lendTo(U'水'), third);
    EXPECT_EQ(spare->lendTo(U'火'), first);
}

TEST_F(SpareKeysTest, areKnownToProgramsForAWhileBeforeTheirStroke) {
    QElapsedTimer timer;
    timer.start();

    EXPECT_TRUE(spare->lendTo(U'日'));

    EXPECT_GE(timer.elapsed(), 200);
}

TEST_F(SpareKeysTest, restBetweenTwoCharacters) {
    leave(1);
    EXPECT_TRUE(spare->lendTo(U'日'));
    QElapsedTimer timer;
    timer.start();

    EXPECT_TRUE(spare->lendTo(U'本'));

    EXPECT_GE(timer.elapsed(), 1200) << "after the one, and before the other";
}

TEST_F(SpareKeysTest, areReadyForWhatIsExpected) {
    spare->expect({U'日', U'本', U'日'});
    EXPECT_EQ(lentKeys().size(), 2U);
    passTime(250);
    QElapsedTimer timer;
    timer.start();

    EXPECT_THAT(symbols(*spare->lendTo(U'日')), Each(0x010065E5U));
    EXPECT_THAT(symbols(*spare->lendTo(U'本')), Each(0x0100672CU));

    EXPECT_LT(timer.elapsed(), 200);
}

TEST_F(SpareKeysTest, passOnToWhatIsExpectedLater) {
    leave(2);
    spare->expect({U'日', U'本', U'語', U'水'});
    EXPECT_TRUE(spare->lendTo(U'日'));
    EXPECT_TRUE(spare->lendTo(U'本'));
    passTime(1050);

    spare->expect({U'火'});

    std::set<xcb_keysym_t> lent;
    for (const auto keycode : lentKeys())
        lent.insert(symbols(keycode)[0]);
    EXPECT_THAT(lent, ElementsAre(0x01006C34U, 0x01008A9EU)) << "the two that come next";
    EXPECT_THAT(symbols(*spare->lendTo(U'語')), Each(0x01008A9EU));
    EXPECT_THAT(symbols(*spare->lendTo(U'水')), Each(0x01006C34U));
    EXPECT_THAT(symbols(*spare->lendTo(U'火')), Each(0x0100706BU));
}

TEST_F(SpareKeysTest, areRightWhateverComes) {
    leave(2);
    spare->expect({U'日', U'本', U'語'});

    for (const char32_t character : U"水語火日"s)
        EXPECT_THAT(symbols(*spare->lendTo(character)), Each(0x01000000U + character));
}

TEST_F(SpareKeysTest, areNotTakenBackAsLongAsTheyAreExpected) {
    spare->expect({U'日'});
    passTime(1500);
    EXPECT_EQ(lentKeys().size(), 1U);

    spare->expectNothing();

    EXPECT_TRUE(waitUntil([&] { return lentKeys().empty(); }));
}

TEST_F(SpareKeysTest, areTakenBackASecondAfterTheLastUse) {
    EXPECT_TRUE(spare->lendTo(U'日'));
    passTime(700);
    EXPECT_TRUE(spare->lendTo(U'本'));
    passTime(700);
    EXPECT_EQ(lentKeys().size(), 2U);

    EXPECT_TRUE(waitUntil([&] { return lentKeys().empty(); }));
}

TEST_F(SpareKeysTest, areTakenBackAtTheEnd) {
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(spare->lendTo(U'日'));

    spare.reset();

    EXPECT_THAT(lentKeys(), IsEmpty());
    EXPECT_GE(timer.elapsed(), 100) << "the receiver of the stroke may still have to look its key up";
}

TEST_F(SpareKeysTest, endAtOnceWhereNoneIsLent) {
    QElapsedTimer timer;
    timer.start();
    spare.reset();
    EXPECT_LT(timer.elapsed(), 90);
}

TEST_F(SpareKeysTest, areFoundAgainAfterACrash) {
    leave(2);
    runOnDisplay("xmodmap", {"-e", "keycode 93 = U65E5 U65E5", "-e", "keycode 103 = eacute eacute"});
    ASSERT_EQ(symbols(93)[0], 0x010065E5U);

    EXPECT_EQ(spare->lendTo(U'日'), 93);
    EXPECT_EQ(spare->lendTo(U'水'), 103);
    spare.reset();

    EXPECT_THAT(symbols(93), IsEmpty());
    EXPECT_THAT(symbols(103), IsEmpty());
}

TEST_F(SpareKeysTest, areNoKeysThatWereGivenAMeaning) {
    leave(2);
    runOnDisplay("xmodmap", {"-e", "keycode 93 = U65E5"});

    for (const char32_t character : {U'日', U'本', U'語'})
        EXPECT_NE(spare->lendTo(character), 93);

    EXPECT_EQ(symbols(93)[0], 0x010065E5U);
}

TEST_F(SpareKeysTest, keepTheMeaningThatAnotherLayoutGaveThem) {
    const auto keycode = spare->lendTo(U'日');
    ASSERT_TRUE(keycode);
    runOnDisplay("xmodmap", {"-e", QString("keycode %1 = XF86Launch0").arg(*keycode)});

    spare.reset();

    EXPECT_THAT(symbols(*keycode), Not(IsEmpty()));
}

TEST_F(SpareKeysTest, mayNotBeThere) {
    EXPECT_TRUE(spare->areThere());
    leave(0);

    EXPECT_FALSE(spare->areThere());
    EXPECT_EQ(spare->lendTo(U'日'), std::nullopt);
    const KeyEvent event{.text = "日"};
    EXPECT_EQ(keyboard->makeSource({})->post({&event, 1}), KeyEventSource::Posted::impossible);
}

TEST_F(SpareKeysTest, standForNoControlCharacter) {
    for (const char32_t character : {U'\0', U'\1', U'\t', U'\n', U'\x1F', U'\x7F', U'\x80', U'\x9F'})
        EXPECT_FALSE(SpareKeys::canStandFor(character)) << static_cast<unsigned>(character);
    for (const char32_t character : {U' ', U'~', U'\xA0', U'ÿ', U'Ā', U'\u200D', U'😀', U'\U0010FFFF'})
        EXPECT_TRUE(SpareKeys::canStandFor(character)) << static_cast<unsigned>(character);
}

TEST_F(SpareKeysTest, areStruckForEachCodePointOfACharacter) {
    FocusedProgram program(*connection);
    const std::string family = "👩\u200D👩\u200D👧";
    std::array<KeyEvent, 2> events{KeyEvent{.text = family}, KeyEvent{.down = false, .text = family}};
    EXPECT_EQ(keyboard->makeSource(program.window())->post(events), KeyEventSource::Posted::yes);

    std::u32string typed;
    for (const auto& stroke : program.strokes())
        if (stroke[0] == '+')
            typed +=
                static_cast<char32_t>(symbols(static_cast<xcb_keycode_t>(std::stoi(stroke.substr(1))))[0] & 0xFFFFFF);
    EXPECT_EQ(typed, U"👩\u200D👩\u200D👧");
}

TEST_F(SpareKeysTest, areReadyForTheCharactersThatAreAnnounced) {
    auto source = keyboard->makeSource({});

    source->expect("\n\r\n日");
    source->expect("😀");

    EXPECT_EQ(lentKeys().size(), 2U);
    source.reset();
    EXPECT_TRUE(waitUntil([&] { return lentKeys().empty(); }));
}

TEST_F(SpareKeysTest, areNotNeededForALineEnd) {
    leave(0);
    FocusedProgram program(*connection);
    const auto source = keyboard->makeSource(program.window());
    for (const std::string_view end : {"\n", "\r\n", "\r"}) {
        std::array<KeyEvent, 2> events{KeyEvent{.text = end}, KeyEvent{.down = false, .text = end}};
        EXPECT_EQ(source->post(events), KeyEventSource::Posted::yes);
        EXPECT_THAT(program.strokes(), ElementsAre("+36", "-36"));
    }
}

TEST_F(SpareKeysTest, endWithTheServer) {
    EXPECT_TRUE(spare->lendTo(U'日'));
    display.stop();

    EXPECT_EQ(spare->lendTo(U'本'), std::nullopt);
    spare.reset();
}
