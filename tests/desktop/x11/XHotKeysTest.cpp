// SPDX-License-Identifier: MIT
#include "platform/x11/XHotKeys.h"

#include "platform/x11/XAnswer.h"
#include "tests/desktop/x11/Hands.h"
#include "tests/desktop/x11/X11Test.h"

#include <gmock/gmock.h>

#include <QAbstractEventDispatcher>

#include <algorithm>
#include <span>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr HotKey ctrlAltA{.keyCode = 0, .modifiers = hotKeyCommand | hotKeyOption};
constexpr HotKey ctrlAltB{.keyCode = 11, .modifiers = hotKeyCommand | hotKeyOption};
constexpr HotKey superX{.keyCode = 7, .modifiers = hotKeyControl};

class XHotKeysTest : public X11Test {
protected:
    XHotKeysTest() {
        EXPECT_TRUE(
            hotKeys->installHandler([this](HotKeys::Identifier identifier) { reported.push_back(identifier); }));
    }

    void strikeCtrlAltA() { hands.strike({Hands::control, Hands::alt, Hands::a}); }

    /// Whether another program could take the combination, whatever locks are on.
    static bool othersCanTake(const HotKey& hotKey) {
        HotKeyState state;
        return XHotKeys(XConnection::connected(), state).registerHotKey(hotKey, 1);
    }

    /// Waits long enough for a press that must not be reported.
    static void letPressesCome() { passTime(150); }

    bool isTold(std::size_t times) {
        return comesTrue([&] { return reported.size() >= times; });
    }

    HotKeyState state;
    std::unique_ptr<XHotKeys> hotKeys = std::make_unique<XHotKeys>(XConnection::connected(), state);
    Hands hands;
    std::vector<HotKeys::Identifier> reported;
};

/// The keys of each of the eight modifiers.
class ModifierMap {
public:
    explicit ModifierMap(const Hands& hands)
        : m_hands(hands),
          m_reply(xcb_get_modifier_mapping_reply(hands.connection(), xcb_get_modifier_mapping(hands.connection()),
                                                 nullptr)) {}

    void exchange(unsigned one, unsigned other) { std::ranges::swap_ranges(row(one), row(other)); }
    void empty(unsigned modifier) { std::ranges::fill(row(modifier), 0); }

    void set() {
        const XAnswer<xcb_set_modifier_mapping_reply_t> reply(xcb_set_modifier_mapping_reply(
            m_hands.connection(),
            xcb_set_modifier_mapping(m_hands.connection(), m_reply->keycodes_per_modifier,
                                     xcb_get_modifier_mapping_keycodes(m_reply.get())),
            nullptr));
        ASSERT_EQ(reply->status, XCB_MAPPING_STATUS_SUCCESS);
    }

private:
    std::span<xcb_keycode_t> row(unsigned modifier) {
        const std::size_t width = m_reply->keycodes_per_modifier;
        return std::span(xcb_get_modifier_mapping_keycodes(m_reply.get()), 8 * width).subspan(modifier * width, width);
    }

    const Hands& m_hands;
    XAnswer<xcb_get_modifier_mapping_reply_t> m_reply;
};

constexpr unsigned mod1 = 3;
constexpr unsigned mod4 = 6;

TEST_F(XHotKeysTest, aPressIsReportedUnderItsIdentifier) {
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltA, 7));

    strikeCtrlAltA();

    EXPECT_TRUE(isTold(1));
    letPressesCome();
    EXPECT_THAT(reported, ElementsAre(7));
}

TEST_F(XHotKeysTest, eachOfSeveralCombinationsHasItsIdentifier) {
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltA, 1));
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltB, 2));
    ASSERT_TRUE(hotKeys->registerHotKey(superX, 3));

    hands.strike({Hands::super, Hands::x});
    hands.strike({Hands::control, Hands::alt, Hands::b});
    strikeCtrlAltA();

    EXPECT_TRUE(isTold(3));
    EXPECT_THAT(reported, ElementsAre(3, 2, 1));
}

TEST_F(XHotKeysTest, noOtherModifierMayBeHeld) {
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltA, 1));

    hands.strike({Hands::control, Hands::alt, Hands::shift, Hands::a});
    hands.strike({Hands::control, Hands::a});
    hands.strike({Hands::a});
    letPressesCome();

    EXPECT_THAT(reported, IsEmpty());
}

TEST_F(XHotKeysTest, noLockMakesADifference) {
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltA, 1));

    hands.strike({Hands::capsLock});
    strikeCtrlAltA();
    EXPECT_TRUE(isTold(1));
    hands.strike({Hands::numLock});
    strikeCtrlAltA();
    EXPECT_TRUE(isTold(2));
    hands.strike({Hands::capsLock});
    strikeCtrlAltA();
    EXPECT_TRUE(isTold(3));
}

TEST_F(XHotKeysTest, aHeldCombinationIsReportedOnceAndAgainAfterItsRelease) {
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltA, 1));
    for (const auto key : {Hands::control, Hands::alt, Hands::a})
        hands.press(key);

    passTime(1500);  // the keyboard repeats from 660 ms on
    EXPECT_EQ(reported.size(), 1);

    hands.release(Hands::a);
    hands.strike({Hands::a});
    EXPECT_TRUE(isTold(2));
    EXPECT_EQ(reported.size(), 2);
}

TEST_F(XHotKeysTest, pressesAreReportedThatCameAlongWithAnAnswer) {
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltA, 1));

    for (std::size_t presses = 1; presses <= 30; ++presses) {
        strikeCtrlAltA();
        ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltB, 2));
        hotKeys->unregisterHotKey(2);
        ASSERT_TRUE(comesTrue([&] { return reported.size() == presses; }, 2000)) << presses;
    }
}

TEST_F(XHotKeysTest, aCombinationThatAnotherProgramHasIsRefusedInWhole) {
    for (const unsigned locks :
         {0U, unsigned{XCB_MOD_MASK_LOCK}, unsigned{XCB_MOD_MASK_2}, unsigned{XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2}}) {
        const auto others = static_cast<std::uint16_t>(XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | locks);
        xcb_grab_key(hands.connection(), 0, hands.root(), others, Hands::a, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        hands.roundTrip();

        EXPECT_FALSE(hotKeys->registerHotKey(ctrlAltA, 1));
        EXPECT_EQ(state.keycode, 0);

        xcb_ungrab_key(hands.connection(), Hands::a, hands.root(), others);
        hands.roundTrip();
        EXPECT_TRUE(othersCanTake(ctrlAltA)) << "something of it was kept";
    }
    EXPECT_TRUE(hotKeys->registerHotKey(ctrlAltA, 1));
    strikeCtrlAltA();
    EXPECT_TRUE(isTold(1));
}

TEST_F(XHotKeysTest, aCombinationCanBeGivenBackAndTakenAgainAtOnce) {
    for (HotKeys::Identifier identifier = 1; identifier <= 20; ++identifier) {
        ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltA, identifier));
        EXPECT_EQ(state.keycode, Hands::a);
        hotKeys->unregisterHotKey(identifier);
        EXPECT_EQ(state.keycode, 0);
    }
    EXPECT_TRUE(othersCanTake(ctrlAltA));
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltA, 21));

    strikeCtrlAltA();

    EXPECT_TRUE(isTold(1));
    EXPECT_THAT(reported, ElementsAre(21));
}

TEST_F(XHotKeysTest, allIsGivenBackAtTheEnd) {
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltA, 1));
    EXPECT_FALSE(othersCanTake(ctrlAltA));

    hotKeys.reset();

    EXPECT_TRUE(comesTrue([&] { return othersCanTake(ctrlAltA); }));
    EXPECT_EQ(state.keycode, 0);
}

TEST_F(XHotKeysTest, aPressOfACombinationThatWasGivenBackIsNotReported) {
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltA, 1));
    strikeCtrlAltA();
    hotKeys->unregisterHotKey(1);
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltB, 2));

    letPressesCome();

    EXPECT_THAT(reported, IsEmpty());
}

TEST_F(XHotKeysTest, aKeyThatIsDownWhenItIsTakenCountsFromItsNextPressOn) {
    for (const auto key : {Hands::control, Hands::alt, Hands::a})
        hands.press(key);
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltA, 1));

    passTime(1200);
    EXPECT_THAT(reported, IsEmpty());

    hands.release(Hands::a);
    letPressesCome();
    hands.strike({Hands::a});
    EXPECT_TRUE(isTold(1));
}

TEST_F(XHotKeysTest, theGrabFollowsTheModifiersToOtherBits) {
    ASSERT_TRUE(hotKeys->registerHotKey(superX, 1));
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltA, 2));
    ModifierMap map(hands);
    map.exchange(mod1, mod4);
    map.set();
    letPressesCome();

    hands.strike({Hands::super, Hands::x});
    EXPECT_TRUE(isTold(1));
    strikeCtrlAltA();
    EXPECT_TRUE(isTold(2));
    EXPECT_THAT(reported, ElementsAre(1, 2));
}

TEST_F(XHotKeysTest, aModifierThatTheKeyboardLacksIsRefused) {
    ModifierMap map(hands);
    map.empty(mod4);
    map.set();
    ASSERT_TRUE(comesTrue([&] { return !hotKeys->registerHotKey(superX, 1); }, 500));
    EXPECT_TRUE(hotKeys->registerHotKey(ctrlAltA, 2));
}

TEST_F(XHotKeysTest, aCodeThatNoKeyHasIsRefused) {
    for (const std::uint32_t code : {52U, 63U, 66U, 127U, 128U, 0xFFFFFFFFU})
        EXPECT_FALSE(hotKeys->registerHotKey({.keyCode = code, .modifiers = ctrlAltA.modifiers}, 1)) << code;
}

TEST_F(XHotKeysTest, noPressIsReportedOnceTheHandlerIsRemoved) {
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltA, 1));
    hotKeys->removeHandler();

    strikeCtrlAltA();
    letPressesCome();

    EXPECT_THAT(reported, IsEmpty());
}

TEST_F(XHotKeysTest, aPressThatAnotherProgramMakesUpIsNotReported) {
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltA, 1));
    xcb_key_press_event_t press{};
    press.response_type = XCB_KEY_PRESS;
    press.detail = Hands::a;
    press.state = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
    press.root = hands.root();
    xcb_send_event(hands.connection(), 1, hands.root(), XCB_EVENT_MASK_KEY_PRESS,
                   reinterpret_cast<const char*>(&press));
    hands.roundTrip();
    letPressesCome();

    EXPECT_THAT(reported, IsEmpty());
}

TEST_F(XHotKeysTest, aBrokenConnectionIsHarmless) {
    ASSERT_TRUE(hotKeys->registerHotKey(ctrlAltA, 1));
    display.stop();
    int turns = 0;
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, [&] { ++turns; });
    passTime(500);

    EXPECT_LT(turns, 200) << "the loop runs idle";
    EXPECT_FALSE(hotKeys->registerHotKey(ctrlAltB, 2));
    EXPECT_FALSE(hotKeys->installHandler([](HotKeys::Identifier) {}));
    hotKeys->unregisterHotKey(1);
    EXPECT_EQ(state.keycode, 0);
}

}  // namespace
