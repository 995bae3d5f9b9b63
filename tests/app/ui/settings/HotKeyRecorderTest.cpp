// SPDX-License-Identifier: MIT
#include "app/ui/settings/HotKeyRecorder.h"
#include "tests/app/ui/WindowProbe.h"
#include "tests/app/ui/WindowTest.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QShortcut>
#include <QVBoxLayout>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr quint32 firstScanCode = 8;

/// A recorder beside a field, in a window with shortcuts of its own.
class HotKeyRecorderTest : public WindowTest {
protected:
    QWidget window;
    HotKeyRecorder* recorder = new HotKeyRecorder(*preferences, hotKey);
    QLineEdit* field = new QLineEdit;
    int shortcuts = 0;

    HotKeyRecorderTest() {
        hotKey.registerGlobalHotKey();
        auto* const column = new QVBoxLayout(&window);
        column->addWidget(recorder);
        column->addWidget(field);
        for (const auto& key : {QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::Key_Escape)})
            QObject::connect(new QShortcut(key, &window), &QShortcut::activated, [this] { ++shortcuts; });
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    void record() {
        QTest::mouseClick(recorder, Qt::LeftButton);
        ASSERT_TRUE(recorder->isRecording());
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(recorder, key, modifiers); }
    /// A press as the desktop sends it, of the key at that position of the keyboard. Whether it was taken.
    bool pressAt(quint32 evdevCode, Qt::Key key, Qt::KeyboardModifiers modifiers, bool repeats = false) {
        return send({QEvent::KeyPress, key, modifiers, evdevCode + firstScanCode, 0, 0, {}, repeats});
    }
    /// A press without a position.
    bool pressNamed(Qt::Key key, Qt::KeyboardModifiers modifiers) { return send({QEvent::KeyPress, key, modifiers}); }
    bool send(QKeyEvent event) {
        event.ignore();
        QApplication::sendEvent(recorder, &event);
        return event.isAccepted();
    }
    void release(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyRelease(recorder, key, modifiers); }
    std::vector<HotKey> registered() const {
        std::vector<HotKey> all;
        for (const auto& [identifier, combination] : desktop.hotKeys.registered)
            all.push_back(combination);
        return all;
    }
    HotKey stored() const {
        return {.keyCode = preferences->hotKeyCode(), .modifiers = preferences->hotKeyModifiers()};
    }
    QString heard(QAccessible::Text text = QAccessible::Name) const {
        return QAccessible::queryAccessibleInterface(recorder)->text(text);
    }
};

TEST_F(HotKeyRecorderTest, showsTheStoredCombinationAtRest) {
    EXPECT_EQ(recorder->text(), "⌥⌘A");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(recorder)->role(), QAccessible::Button);
    preferences->setHotKeyModifiers(hotKeyShift);
    preferences->setHotKeyCode(49);
    EXPECT_EQ(recorder->text(), "⇧Boşluk");
    preferences->setHotKeyCode(51);
    EXPECT_EQ(recorder->text(), "⇧#51");
}

TEST_F(HotKeyRecorderTest, isHeardByTheNamesOfTheKeys) {
    EXPECT_EQ(heard(), "Ctrl+Alt+A");
    record();
    press(Qt::Key_Return, Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier | Qt::MetaModifier);
    EXPECT_EQ(heard(), "Super+Ctrl+Alt+Shift+Enter");
    EXPECT_EQ(recorder->text(), "⌃⌥⇧⌘⏎");
}

TEST_F(HotKeyRecorderTest, hasRoomForTheSignsAndTheNamesOfTheLongestCombination) {
    preferences->setHotKeyModifiers(hotKeyCommand | hotKeyOption | hotKeyShift | hotKeyControl);
    preferences->setHotKeyCode(76);
    EXPECT_EQ(heard(), "Super+Ctrl+Alt+Shift+Sayısal Enter");
    EXPECT_GT(recorder->sizeHint().width(), recorder->fontMetrics().horizontalAdvance(heard()));
}

TEST_F(HotKeyRecorderTest, saysWhatToDoWhileItRecords) {
    record();
    EXPECT_EQ(heard(), "Tuş kombinasyonuna bas…");
    EXPECT_EQ(heard(QAccessible::Description), "esc ile vazgeç");
    QTest::mouseClick(recorder, Qt::LeftButton);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_EQ(recorder->text(), "⌥⌘A");
    EXPECT_EQ(heard(QAccessible::Description), "");
}

TEST_F(HotKeyRecorderTest, aCombinationIsStoredAndWorksAtOnce) {
    record();
    press(Qt::Key_K, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_EQ(recorder->text(), "⇧⌘K");
    EXPECT_EQ(stored(), (HotKey{.keyCode = 40, .modifiers = hotKeyCommand | hotKeyShift}));
    EXPECT_THAT(registered(), ElementsAre(stored()));
}

TEST_F(HotKeyRecorderTest, eachModifierHasItsPlace) {
    const std::pair<Qt::KeyboardModifier, std::uint32_t> modifiers[] = {
        {Qt::ControlModifier, 0x100}, {Qt::ShiftModifier, 0x200}, {Qt::AltModifier, 0x800}, {Qt::MetaModifier, 0x1000}};
    for (const auto& [held, bit] : modifiers) {
        record();
        press(Qt::Key_F5, held);
        EXPECT_EQ(stored(), (HotKey{.keyCode = 96, .modifiers = bit}));
    }
    record();
    press(Qt::Key_F5, Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier | Qt::MetaModifier);
    EXPECT_EQ(recorder->text(), "⌃⌥⇧⌘F5");
    record();
    press(Qt::Key_F5, Qt::ControlModifier | Qt::KeypadModifier | Qt::GroupSwitchModifier);
    EXPECT_EQ(stored().modifiers, 0x100U) << "others count for nothing";
}

TEST_F(HotKeyRecorderTest, aKeyIsKnownByItsPlaceWhateverItsLetter) {
    record();
    pressAt(16, Qt::Key_A, Qt::ControlModifier);  // where US layouts have Q, as on a French keyboard
    EXPECT_EQ(stored().keyCode, 12U);
    release(Qt::Key_A);
    record();
    pressAt(57, Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(recorder->text(), "⇧Boşluk");
}

TEST_F(HotKeyRecorderTest, aLetterAloneIsRejectedAndTheMessageStandsUntilTheNextStart) {
    record();
    press(Qt::Key_A);
    EXPECT_TRUE(recorder->isRejected());
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_EQ(stored(), HotKey());

    press(Qt::Key_J, Qt::AltModifier);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_EQ(recorder->text(), "⌥J");
    EXPECT_TRUE(recorder->isRejected());

    record();
    EXPECT_FALSE(recorder->isRejected());
}

TEST_F(HotKeyRecorderTest, escapeLeavesTheMessageToo) {
    record();
    press(Qt::Key_A);
    press(Qt::Key_Escape);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_TRUE(recorder->isRejected());
}

TEST_F(HotKeyRecorderTest, escapeEndsItWhateverIsHeld) {
    for (const auto modifiers : {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier}) {
        record();
        press(Qt::Key_Escape, modifiers);
        EXPECT_FALSE(recorder->isRecording());
        record();
        pressAt(1, Qt::Key_Escape, modifiers);
        EXPECT_FALSE(recorder->isRecording());
        release(Qt::Key_Escape);
    }
    EXPECT_EQ(stored(), HotKey());
    EXPECT_EQ(shortcuts, 0);
    EXPECT_THAT(registered(), ElementsAre(HotKey()));
}

TEST_F(HotKeyRecorderTest, aModifierAloneIsNoCombination) {
    record();
    const std::pair<Qt::Key, Qt::KeyboardModifier> keys[] = {
        {Qt::Key_Control, Qt::ControlModifier}, {Qt::Key_Shift, Qt::ShiftModifier}, {Qt::Key_Alt, Qt::AltModifier},
        {Qt::Key_Meta, Qt::MetaModifier},       {Qt::Key_AltGr, Qt::NoModifier},    {Qt::Key_CapsLock, Qt::NoModifier},
        {Qt::Key_NumLock, Qt::ControlModifier}};
    for (const auto& [key, modifier] : keys) {
        pressNamed(key, modifier);
        EXPECT_TRUE(recorder->isRecording());
        EXPECT_FALSE(recorder->isRejected());
    }
    pressAt(97, Qt::Key_Control, Qt::ControlModifier);  // the right one, which has a code
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_EQ(stored(), HotKey());
}

TEST_F(HotKeyRecorderTest, aKeyWithoutACodeIsPassedOver) {
    record();
    pressAt(99, Qt::Key_Print, Qt::ControlModifier);
    pressAt(164, Qt::Key_MediaTogglePlayPause, Qt::NoModifier);
    pressNamed(Qt::Key_Ccedilla, Qt::ControlModifier);
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_FALSE(recorder->isRejected());
}

TEST_F(HotKeyRecorderTest, noKeyReachesTheWindowMeanwhile) {
    record();
    field->setFocus();
    record();
    QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(shortcuts, 0);
    EXPECT_EQ(recorder->text(), "⌘W");
    QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(shortcuts, 1) << "and afterwards they do again";
}

TEST_F(HotKeyRecorderTest, theHotKeyIsGivenBackWhileRecording) {
    EXPECT_THAT(registered(), ElementsAre(HotKey()));
    record();
    EXPECT_THAT(registered(), IsEmpty());
    press(Qt::Key_Escape);
    EXPECT_THAT(registered(), ElementsAre(HotKey()));
}

TEST_F(HotKeyRecorderTest, theSameCombinationCanBeRecordedAgain) {
    record();
    press(Qt::Key_A, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(stored(), HotKey());
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_THAT(registered(), ElementsAre(HotKey()));
}

TEST_F(HotKeyRecorderTest, whatIsHeldOnNeitherPressesTheNewHotKeyNorReachesTheWindow) {
    record();
    pressAt(17, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_TRUE(pressAt(17, Qt::Key_W, Qt::ControlModifier, true));
    EXPECT_EQ(shortcuts, 0);
    EXPECT_THAT(registered(), IsEmpty());

    QTest::keyRelease(recorder, Qt::Key_Control);
    EXPECT_THAT(registered(), IsEmpty()) << "its own key is still down";
    release(Qt::Key_W);
    EXPECT_THAT(registered(), ElementsAre(HotKey{.keyCode = 13, .modifiers = hotKeyCommand}));
}

TEST_F(HotKeyRecorderTest, losingTheFocusEndsIt) {
    record();
    field->setFocus();
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_THAT(registered(), ElementsAre(HotKey()));
    QTest::keyClicks(field, "a");
    EXPECT_EQ(field->text(), "a");
    EXPECT_FALSE(recorder->isRejected());
}

TEST_F(HotKeyRecorderTest, closingTheWindowEndsIt) {
    record();
    window.close();
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_THAT(registered(), ElementsAre(HotKey()));
}

TEST_F(HotKeyRecorderTest, goingAwayEndsIt) {
    record();
    delete recorder;
    EXPECT_THAT(registered(), ElementsAre(HotKey()));
    QTest::keyClick(field, Qt::Key_X);
    EXPECT_EQ(field->text(), "x");
}

TEST_F(HotKeyRecorderTest, isStartedAndEndedByTheKeyboard) {
    recorder->setFocus();
    press(Qt::Key_Space);
    EXPECT_TRUE(recorder->isRecording());
    press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_EQ(recorder->text(), "⌘Boşluk");
}

}  // namespace
