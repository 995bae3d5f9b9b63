// SPDX-License-Identifier: MIT
#include "tests/platform/x11/KeyboardFixture.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QTimer>

#include <array>
#include <chrono>
#include <string_view>
#include <thread>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Posted = KeyEventSource::Posted;

constexpr std::uint16_t codeOfA = 0;
constexpr std::uint16_t codeOfShift = 56;
constexpr std::uint16_t codeOfControl = 59;
constexpr std::uint16_t codeOfOption = 58;
constexpr std::uint16_t codeOfCommand = 55;

KeyEvent key(std::uint16_t code, bool down, std::uint64_t flags = 0) {
    return {.code = code, .down = down, .flags = flags, .text = {}};
}

KeyEvent modifier(std::uint16_t code, bool down) {
    return {.kind = KeyEvent::Kind::flagsChanged, .code = code, .down = down, .text = {}};
}

class XKeyboardEventsTest : public KeyboardTest {
protected:
    using KeyboardTest::KeyboardTest;

    void SetUp() override {
        KeyboardTest::SetUp();
        program.emplace(*connection);
    }

    static bool post(KeyEventSource& source, std::initializer_list<KeyEvent> events) {
        return source.post({events.begin(), events.size()}) == Posted::yes;
    }
    bool post(std::initializer_list<KeyEvent> events) { return post(*source(), events); }

    [[nodiscard]] std::unique_ptr<KeyEventSource> source() { return keyboard->makeSource(program->window()); }

    std::optional<FocusedProgram> program;
};

/// On a server without the extension for posting.
class XKeyboardWithoutXTestTest : public KeyboardTest {
protected:
    XKeyboardWithoutXTestTest() : KeyboardTest({"-extension", "XTEST"}) {}
};

}  // namespace

TEST_F(XKeyboardEventsTest, hasPermissionWithoutAsking) {
    EXPECT_TRUE(keyboard->hasPermission());
    EXPECT_FALSE(keyboard->canRequestPermission());
    keyboard->requestPermission();
    EXPECT_TRUE(keyboard->hasPermission());
}

TEST_F(XKeyboardWithoutXTestTest, hasNoPermissionAndNoSource) {
    EXPECT_FALSE(keyboard->hasPermission());
    EXPECT_EQ(keyboard->makeSource({}), nullptr);
    EXPECT_EQ(keyboard->heldModifiers(), 0U);
}

TEST_F(XKeyboardEventsTest, postsAKeyByItsPlace) {
    EXPECT_TRUE(post({key(codeOfA, true), key(codeOfA, false), key(36, true), key(36, false)}));

    EXPECT_THAT(program->strokes(), ElementsAre("+38", "-38", "+36", "-36"));
}

TEST_F(XKeyboardEventsTest, postsTheModifiersThatAreHeldAroundAKey) {
    select({"tr"});

    EXPECT_TRUE(post({modifier(codeOfShift, true), modifier(codeOfOption, true),
                      key(codeOfA, true, KeyFlag::shift | KeyFlag::option),
                      key(codeOfA, false, KeyFlag::shift | KeyFlag::option), modifier(codeOfOption, false),
                      modifier(codeOfShift, false)}));

    EXPECT_THAT(program->strokes(), ElementsAre("+50", "+108/1", "+38/129", "-38", "-108", "-50"));
}

TEST_F(XKeyboardEventsTest, holdsTheModifiersOfAKeyThatNoEventPressed) {
    select({"tr"});

    EXPECT_TRUE(post({key(codeOfA, true, KeyFlag::shift | KeyFlag::option),
                      key(codeOfA, false, KeyFlag::shift | KeyFlag::option), key(codeOfA, true, KeyFlag::command),
                      key(codeOfA, false, KeyFlag::command), key(codeOfA, true), key(codeOfA, false)}));

    EXPECT_THAT(program->strokes(), ElementsAre("+50", "+108/1", "+38/129", "-38", "-108", "-50", "+37", "+38/4", "-38",
                                                "-37", "+38", "-38"));
}

TEST_F(XKeyboardEventsTest, takesAltGrFromWhereTheLayoutHasIt) {
    select({"us"});
    EXPECT_TRUE(post({modifier(codeOfOption, true), modifier(codeOfOption, false)}));
    EXPECT_THAT(program->strokes(), ElementsAre("+92", "-92")) << "the right Alt is an Alt there";

    select({"us,tr"});
    selectGroup(1);
    EXPECT_TRUE(post({modifier(codeOfOption, true), modifier(codeOfOption, false)}));
    EXPECT_THAT(program->strokes(), ElementsAre(testing::StartsWith("+108"), "-108"));
}

TEST_F(XKeyboardEventsTest, takesModifiersFromWhereTheUserHasPutThem) {
    select({"us", "-option", "ctrl:swapcaps", "-option", "altwin:swap_alt_win"});

    EXPECT_TRUE(post({modifier(codeOfCommand, true), modifier(codeOfCommand, false), modifier(codeOfControl, true),
                      modifier(codeOfControl, false)}));

    EXPECT_THAT(program->strokes(), ElementsAre("+66", "-66", "+64", "-64"));
    EXPECT_EQ(lockedModifiers(), 0);
}

TEST_F(XKeyboardEventsTest, postsNothingWhereOneOfTheEventsCannotBeMade) {
    const auto run = source();

    for (const std::uint16_t code : {52, 63, 127, 128, 65535}) {
        EXPECT_FALSE(post(*run, {key(codeOfA, true), key(code, true)})) << code;
        EXPECT_FALSE(post(*run, {key(codeOfA, true), modifier(code, true)})) << code;
    }
    EXPECT_FALSE(post(*run, {key(codeOfA, true), modifier(codeOfA, true)})) << "no modifier";
    const KeyEvent controlCharacter{.text = "\x01"};
    EXPECT_FALSE(post(*run, {key(codeOfA, true), controlCharacter}));

    EXPECT_THAT(program->strokes(), IsEmpty());
}

TEST_F(XKeyboardEventsTest, postsNoModifierThatTheKeyboardLacks) {
    runOnDisplay("xmodmap", {"-e", "keycode 92 = ", "-e", "keycode 108 = Alt_R"});

    EXPECT_FALSE(post({key(codeOfA, true), modifier(codeOfOption, true)}));
    EXPECT_FALSE(post({key(codeOfA, true, KeyFlag::option)}));

    EXPECT_THAT(program->strokes(), IsEmpty());
}

TEST_F(XKeyboardEventsTest, postsIntoOneWindowAndIntoNoOther) {
    const auto run = source();
    EXPECT_TRUE(post(*run, {modifier(codeOfShift, true)}));
    FocusedProgram another(*connection);

    const auto stroke = std::array{key(codeOfA, true), key(codeOfA, false)};
    EXPECT_EQ(run->post(stroke), Posted::elsewhere);
    const KeyEvent character{.text = "日"};
    EXPECT_EQ(run->post({&character, 1}), Posted::elsewhere);
    const KeyEvent lineEnd{.text = "\n"};
    EXPECT_EQ(run->post({&lineEnd, 1}), Posted::elsewhere);
    EXPECT_FALSE(run->follow());

    EXPECT_TRUE(post(*run, {modifier(codeOfShift, false)})) << "what is down comes up wherever the window went";
    EXPECT_THAT(another.strokes(), ElementsAre("-50"));
    EXPECT_THAT(program->strokes(), ElementsAre("+50"));
    EXPECT_FALSE(isDown(50));
}

TEST_F(XKeyboardEventsTest, postsIntoTheWindowAgainOnceItHasTheFocusAgain) {
    const auto run = source();
    {
        FocusedProgram another(*connection);
        EXPECT_FALSE(post(*run, {key(codeOfA, true), key(codeOfA, false)}));
    }
    xcb_set_input_focus(other->get(), XCB_INPUT_FOCUS_PARENT, static_cast<xcb_window_t>(program->window().number),
                        XCB_CURRENT_TIME);
    other->roundTrip();

    EXPECT_TRUE(post(*run, {key(codeOfA, true), key(codeOfA, false)}));

    EXPECT_THAT(program->strokes(), ElementsAre("+38", "-38"));
}

TEST_F(XKeyboardEventsTest, postsNothingWhereNoWindowHasTheFocus) {
    const auto run = source();
    for (const auto focus : {XCB_INPUT_FOCUS_NONE, XCB_INPUT_FOCUS_POINTER_ROOT}) {
        xcb_set_input_focus(other->get(), XCB_INPUT_FOCUS_PARENT, focus, XCB_CURRENT_TIME);
        other->roundTrip();

        EXPECT_FALSE(post(*run, {key(codeOfA, true), key(codeOfA, false)}));
    }
    EXPECT_THAT(program->strokes(), IsEmpty());
}

TEST_F(XKeyboardEventsTest, postsIntoAWindowWithinTheWindow) {
    const auto run = source();
    program->focusWithin();

    for (int time = 0; time < 2; ++time)
        EXPECT_TRUE(post(*run, {key(codeOfA, true), key(codeOfA, false)}));

    EXPECT_THAT(program->strokes(), ElementsAre("+38", "-38", "+38", "-38"));
}

TEST_F(XKeyboardEventsTest, postsIntoNoWindowThatHasGoneOrIsOfAnotherProcess) {
    auto window = program->window();
    window.processIdentifier = 1;
    EXPECT_FALSE(post(*keyboard->makeSource(window), {key(codeOfA, true), key(codeOfA, false)}));
    EXPECT_FALSE(post(*keyboard->makeSource({}), {key(codeOfA, true), key(codeOfA, false)}));
    EXPECT_THAT(program->strokes(), IsEmpty());

    const auto run = source();
    program.reset();
    for (int looks = 0; looks < 500 && run->follow(); ++looks)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));  // the server learns of a client's end in its turn
    EXPECT_FALSE(post(*run, {key(codeOfA, true), key(codeOfA, false)}));
    EXPECT_FALSE(run->follow());
}

TEST_F(XKeyboardEventsTest, keepsNoClientFromTheServerAfterAStroke) {
    const auto run = source();
    EXPECT_TRUE(post(*run, {key(codeOfA, true), key(codeOfA, false)}));
    {
        FocusedProgram another(*connection);  // which could not be made otherwise
        EXPECT_FALSE(post(*run, {key(codeOfA, true), key(codeOfA, false)}));
    }
    EXPECT_NE(XConnection::connected(), nullptr);
}

TEST_F(XKeyboardEventsTest, leavesNoKeyDownAtTheEndOfARun) {
    auto run = source();
    EXPECT_TRUE(post(*run, {modifier(codeOfShift, true), modifier(codeOfCommand, true), key(codeOfA, true)}));
    connection->roundTrip();
    EXPECT_TRUE(isDown(50) && isDown(37) && isDown(38));

    run.reset();

    EXPECT_FALSE(isDown(50) || isDown(37) || isDown(38));
    EXPECT_THAT(program->strokes(), ElementsAre("+50", "+37/1", "+38/5", "-38", "-37", "-50"));
}

TEST_F(XKeyboardEventsTest, releasesTheKeyThatItPressedAlsoWhenTheLayoutHasChanged) {
    select({"us"});
    const auto run = source();
    EXPECT_TRUE(post(*run, {modifier(codeOfOption, true)}));

    select({"tr"});
    EXPECT_TRUE(post(*run, {modifier(codeOfOption, false)}));

    connection->roundTrip();
    EXPECT_FALSE(isDown(92) || isDown(108));
}

TEST_F(XKeyboardEventsTest, releasesNoKeyThatTheUserHolds) {
    Hands hands;
    hands.press(50);
    const auto run = source();

    EXPECT_TRUE(post(*run, {modifier(codeOfShift, false)}));

    connection->roundTrip();
    EXPECT_TRUE(isDown(50));
}

TEST_F(XKeyboardEventsTest, typesWithCapsLockOffAndTurnsItOnAgain) {
    lock(XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2);

    auto run = source();
    EXPECT_EQ(lockedModifiers(), XCB_MOD_MASK_2) << "NumLock stays";
    EXPECT_TRUE(post(*run, {key(codeOfA, true), key(codeOfA, false)}));
    run.reset();

    EXPECT_EQ(lockedModifiers(), XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2);
    EXPECT_THAT(program->strokes(), ElementsAre("+38/16", "-38"));
}

TEST_F(XKeyboardEventsTest, leavesLocksAloneThatAreOff) {
    source().reset();

    EXPECT_EQ(lockedModifiers(), 0);
}

TEST_F(XKeyboardEventsTest, letsGoOfStickyModifiers) {
    runOnDisplay("xmodmap", {"-e", "keycode 93 = ISO_Level2_Latch", "-e", "add shift = ISO_Level2_Latch"});
    Hands hands;
    hands.strike(93);
    ASSERT_EQ(latchedModifiers(), XCB_MOD_MASK_SHIFT);
    static_cast<void>(program->strokes());

    EXPECT_TRUE(post({key(codeOfA, true), key(codeOfA, false)}));

    EXPECT_EQ(latchedModifiers(), 0);
    EXPECT_THAT(program->strokes(), ElementsAre("+38", "-38"));
}

TEST_F(XKeyboardEventsTest, knowsWhichModifiersTheUserHolds) {
    select({"tr"});
    Hands hands;
    EXPECT_EQ(keyboard->heldModifiers(), 0U);
    for (const auto& [keycode, flag] :
         {std::pair(50, KeyFlag::shift), std::pair(62, KeyFlag::shift), std::pair(37, KeyFlag::command),
          std::pair(105, KeyFlag::command), std::pair(64, KeyFlag::option), std::pair(108, KeyFlag::option),
          std::pair(133, KeyFlag::control), std::pair(134, KeyFlag::control)}) {
        hands.press(static_cast<xcb_keycode_t>(keycode));
        EXPECT_EQ(keyboard->heldModifiers(), flag) << keycode;
        hands.release(static_cast<xcb_keycode_t>(keycode));
        EXPECT_EQ(keyboard->heldModifiers(), 0U) << keycode;
    }

    hands.press(37);
    hands.press(64);
    EXPECT_EQ(keyboard->heldModifiers(), KeyFlag::command | KeyFlag::option);
    hands.release(37);
    hands.release(64);
}

TEST_F(XKeyboardEventsTest, takesNeitherLocksNorOtherKeysNorItsOwnForHeldModifiers) {
    Hands hands;
    lock(XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2 | XCB_MOD_MASK_SHIFT);
    EXPECT_EQ(keyboard->heldModifiers(), 0U);
    lock(0);
    for (const xcb_keycode_t keycode : {38, 66, 77}) {
        hands.press(keycode);
        EXPECT_EQ(keyboard->heldModifiers(), 0U) << int{keycode};
        hands.release(keycode);
    }

    const auto run = source();
    EXPECT_TRUE(post(*run, {modifier(codeOfShift, true)}));
    EXPECT_EQ(keyboard->heldModifiers(), 0U);
}

TEST_F(XKeyboardEventsTest, makesProgramsTakeHeldKeysForReleased) {
    Hands hands;
    hands.press(37);
    hands.press(64);

    keyboard->releaseHeldKeys();
    EXPECT_EQ(keyboard->heldModifiers(), 0U);
    EXPECT_TRUE(post({key(codeOfA, true), key(codeOfA, false)}));
    hands.release(64);
    hands.release(37);
    EXPECT_TRUE(post({key(codeOfA, true), key(codeOfA, false)}));

    EXPECT_THAT(program->strokes(), ElementsAre("+37", "+64/4", "-37", "-64", "+38", "-38", "+38", "-38"));
}

TEST_F(XKeyboardEventsTest, knowsWhetherTheKeyOfTheHotKeyIsHeld) {
    Hands hands;
    hands.press(38);
    EXPECT_FALSE(keyboard->isHotKeyHeld()) << "there is no hot key";

    hotKey.keycode = 38;
    EXPECT_TRUE(keyboard->isHotKeyHeld());

    keyboard->releaseHeldKeys();
    EXPECT_FALSE(keyboard->isHotKeyHeld());
    hands.release(38);
    EXPECT_FALSE(keyboard->isHotKeyHeld());
}

TEST_F(XKeyboardEventsTest, reachesTheProgramOnceTheHeldHotKeyIsReleased) {
    const auto owner = XConnection::connected();
    xcb_grab_key(owner->get(), 0, owner->root(), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1, 38, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    owner->roundTrip();
    hotKey.keycode = 38;
    Hands hands;
    hands.press(37);
    hands.press(64);
    hands.press(38);
    static_cast<void>(program->strokes());

    keyboard->releaseHeldKeys();
    static_cast<void>(program->strokes());
    EXPECT_TRUE(post({key(1, true), key(1, false)}));

    EXPECT_THAT(program->strokes(), ElementsAre("+39", "-39"));
}

TEST_F(XKeyboardEventsTest, reportsChangesOfTheLayoutBeforeItGivesASource) {
    select({"us,tr"});
    int changes = 0;
    layout->observe([&] { ++changes; });

    selectGroup(1);
    EXPECT_EQ(changes, 0);
    const auto run = source();

    EXPECT_GE(changes, 1);
}

TEST_F(XKeyboardEventsTest, isGoneWithItsServer) {
    auto run = source();
    EXPECT_TRUE(post(*run, {modifier(codeOfShift, true), key(codeOfA, true)}));

    display.stop();

    post(*run, {key(codeOfA, false), modifier(codeOfShift, false)});
    EXPECT_FALSE(post(*run, {key(codeOfA, true)}));
    run.reset();
    EXPECT_FALSE(keyboard->hasPermission());
    EXPECT_EQ(keyboard->heldModifiers(), 0U);
    hotKey.keycode = 38;
    EXPECT_FALSE(keyboard->isHotKeyHeld());
    keyboard->releaseHeldKeys();
    EXPECT_EQ(source(), nullptr);
}

TEST_F(XKeyboardEventsTest, doesNotSpinOnceItsServerIsGone) {
    display.stop();
    passTime(50);
    int awakenings = 0;
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, connection.get(),
                     [&] { ++awakenings; });
    QEventLoop loop;
    QTimer::singleShot(300, &loop, &QEventLoop::quit);
    loop.exec();

    EXPECT_LT(awakenings, 20);
}
