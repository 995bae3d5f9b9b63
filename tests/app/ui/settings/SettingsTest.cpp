// SPDX-License-Identifier: MIT
#include "app/ui/components/FocusRing.h"
#include "app/ui/components/ScrollPage.h"
#include "app/ui/settings/HotKeyRecorder.h"
#include "app/ui/settings/SettingsView.h"
#include "app/ui/window/MainWindow.h"
#include "tests/app/ui/WindowProbe.h"
#include "tests/app/ui/WindowTest.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QScrollBar>
#include <QSlider>
#include <QTimer>

namespace {

using namespace WindowProbe;

const QString sequenceName = "Varsayılan tuş sekansı";
const QString granted = "Erişilebilirlik izni verildi";
const QString needed = "Erişilebilirlik izni gerekli";
const QString notInForce =
    "Bu kısayol şu anda devrede değil; başka bir uygulama kullanıyor olabilir. Başka bir kombinasyon seçebilirsin.";
const QString rejected = "En az bir değiştirici tuş gerekli";

class SettingsTest : public WindowTest {
protected:
    std::optional<SettingsView> view;

    void open() {
        view.emplace(environment);
        view->show();
        QCoreApplication::processEvents();
    }
    /// The name and the description of a button.
    QString heardOf(const QString& text) {
        auto* const heard = QAccessible::queryAccessibleInterface(button(*view, text));
        return heard->text(QAccessible::Name) + '|' + heard->text(QAccessible::Description);
    }
    QSlider& slider() { return *find<QSlider>(*view, "Otomatik temizleme"); }
    QStringList checkedTimes() {
        QStringList checked;
        for (const char* const time : {"10 sn", "12 sn", "30 sn", "60 sn"})
            if (button(*view, time)->isChecked())
                checked.append(time);
        return checked;
    }
};

TEST_F(SettingsTest, hasAllItsTexts) {
    open();
    EXPECT_EQ(view->windowTitle(), "Ayarlar");
    for (const char* const text :
         {"Pano", "Otomatik temizleme", "12 sn", "Kopyalanan gizli değerin silinme süresi", "Otomatik yazma",
          "Varsayılan tuş sekansı",
          "{USERNAME} {PASSWORD} {TAB} {ENTER} {DELAY 200} {CLEARFIELD} {URL} {TITLE} {NOTES} {S:AlanAdı}",
          "Genel kısayol", "Her uygulamadan otomatik yazma",
          "Herhangi bir uygulamadayken bu kısayola bas; ön plandaki pencerenin başlığıyla eşleşen kayıt otomatik "
          "yazılır.",
          "Kilit", "Boştayken kilitle", "Klavye ve fare bu süre boyunca kullanılmazsa kasa kilitlenir.",
          "Ekran kilitlendiğinde, başka bir kullanıcıya geçildiğinde ve bilgisayar uyuduğunda. Kaydedilemeyen bir "
          "değişiklik varsa kasa açık kalır."})
        EXPECT_TRUE(shows(*view, text)) << text;
    for (const char* const text :
         {"10 sn", "12 sn", "30 sn", "60 sn", "Varsayılana dön", "⌥⌘A", "Varsayılana dön  (⌘⌥A)", "Kapalı", "5 dk",
          "15 dk", "30 dk", "Oturum kilitlenince kasayı da kilitle"})
        EXPECT_NE(button(*view, text), nullptr) << text;
}

TEST_F(SettingsTest, theClipboardsTimeIsStoredAndHandedOnAtOnce) {
    open();
    QTest::keyClick(&slider(), Qt::Key_Right);
    EXPECT_EQ(preferences->clipboardTimeout(), 13);
    EXPECT_EQ(clipboard.clearAfter(), 13);
    EXPECT_TRUE(shows(*view, "13 sn"));
    EXPECT_EQ(checkedTimes(), QStringList{});
    launch();
    EXPECT_EQ(preferences->clipboardTimeout(), 13) << "after the next launch";
    view.reset();
}

TEST_F(SettingsTest, theClipboardsTimeGoesFromFiveToAHundredAndTwenty) {
    open();
    QTest::keyClick(&slider(), Qt::Key_Home);
    EXPECT_EQ(preferences->clipboardTimeout(), 5);
    QTest::keyClick(&slider(), Qt::Key_Left);
    EXPECT_EQ(preferences->clipboardTimeout(), 5);
    QTest::keyClick(&slider(), Qt::Key_End);
    EXPECT_EQ(preferences->clipboardTimeout(), 120);
    EXPECT_TRUE(shows(*view, "120 sn"));
}

TEST_F(SettingsTest, aQuickTimeIsStoredAndMarked) {
    open();
    EXPECT_EQ(checkedTimes(), QStringList{"12 sn"});
    for (const int seconds : {10, 30, 60, 12}) {
        const QString name = QString("%1 sn").arg(seconds);
        click(*view, name);
        EXPECT_EQ(preferences->clipboardTimeout(), seconds);
        EXPECT_EQ(clipboard.clearAfter(), seconds);
        EXPECT_EQ(slider().value(), seconds);
        EXPECT_EQ(checkedTimes(), QStringList{name});
    }
}

// Which turns a check round without a click.
TEST_F(SettingsTest, aQuickTimeThatAScreenReaderChecksIsStored) {
    open();
    auto* const heard = QAccessible::queryAccessibleInterface(button(*view, "30 sn"));
    EXPECT_EQ(heard->role(), QAccessible::RadioButton) << "of several the one that holds";
    for (int time = 0; time < 2; ++time) {  // the second one leaves it as it is
        heard->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        EXPECT_EQ(preferences->clipboardTimeout(), 30);
        EXPECT_EQ(checkedTimes(), QStringList{"30 sn"});
        EXPECT_TRUE(heard->state().checked);
    }
}

TEST_F(SettingsTest, aStoredTimeThatNoSliderGivesIsShownAndStays) {
    preferences->setClipboardTimeout(300);
    open();
    EXPECT_TRUE(shows(*view, "300 sn"));
    EXPECT_EQ(slider().value(), 120);
    EXPECT_EQ(preferences->clipboardTimeout(), 300);
}

TEST_F(SettingsTest, theVaultLocksByItselfAfterNoneToSixtyMinutes) {
    open();
    auto* const time = find<QSlider>(*view, "Boştayken kilitle");
    EXPECT_EQ(time->value(), 0);
    EXPECT_TRUE(shows(*view, "Kapalı"));
    EXPECT_TRUE(button(*view, "Kapalı")->isChecked());
    EXPECT_TRUE(settings.values.empty()) << "what is shown is not stored";
    QTest::keyClick(time, Qt::Key_Left);
    EXPECT_EQ(preferences->lockAfterMinutes(), 0);
    QTest::keyClick(time, Qt::Key_Right);
    EXPECT_EQ(preferences->lockAfterMinutes(), 1);
    EXPECT_TRUE(shows(*view, "1 dk"));
    EXPECT_FALSE(button(*view, "Kapalı")->isChecked());
    QTest::keyClick(time, Qt::Key_End);
    EXPECT_EQ(preferences->lockAfterMinutes(), 60);
    click(*view, "15 dk");
    EXPECT_EQ(preferences->lockAfterMinutes(), 15);
    EXPECT_EQ(time->value(), 15);
    EXPECT_TRUE(button(*view, "15 dk")->isChecked());
    launch();
    EXPECT_EQ(preferences->lockAfterMinutes(), 15) << "after the next launch";
    view.reset();
}

TEST_F(SettingsTest, theVaultLocksWithTheSessionUnlessThatIsSwitchedOff) {
    open();
    auto* const toggle = button(*view, "Oturum kilitlenince kasayı da kilitle");
    EXPECT_TRUE(toggle->isChecked());
    EXPECT_TRUE(settings.values.empty());
    QTest::keyClick(toggle, Qt::Key_Space);
    EXPECT_FALSE(preferences->lockWithSession());
    auto* const heard = QAccessible::queryAccessibleInterface(toggle);
    heard->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(preferences->lockWithSession());
    preferences->setLockWithSession(false);
    EXPECT_FALSE(toggle->isChecked());
}

TEST_F(SettingsTest, theSequenceIsStoredAsItIsTyped) {
    open();
    EXPECT_EQ(field(*view, sequenceName)->text(), "{USERNAME}{TAB}{PASSWORD}{ENTER}");
    auto* const sequence = field(*view, sequenceName);
    sequence->setFocus();
    sequence->selectAll();
    QTest::keyClicks(sequence, "{TITLE}");
    EXPECT_EQ(preferences->defaultAutoTypeSequence(), "{TITLE}");
    sequence->selectAll();
    QTest::keyClick(sequence, Qt::Key_Backspace);
    EXPECT_EQ(preferences->defaultAutoTypeSequence(), "") << "which types nothing";
}

TEST_F(SettingsTest, theSequenceThatAScreenReaderWritesIsStored) {
    open();
    auto* const heard = QAccessible::queryAccessibleInterface(field(*view, sequenceName));
    heard->editableTextInterface()->replaceText(0, heard->textInterface()->characterCount(), "{TITLE}");
    EXPECT_EQ(preferences->defaultAutoTypeSequence(), "{TITLE}");
    heard->setText(QAccessible::Value, "{URL}");
    EXPECT_EQ(preferences->defaultAutoTypeSequence(), "{URL}");
}

TEST_F(SettingsTest, itIsADialogThatScreenReadersCanName) {
    open();
    auto* const heard = QAccessible::queryAccessibleInterface(&*view);
    EXPECT_EQ(heard->role(), QAccessible::Dialog);
    EXPECT_EQ(heard->text(QAccessible::Name), "Ayarlar");
}

TEST_F(SettingsTest, theSequenceCanBeReset) {
    preferences->setDefaultAutoTypeSequence("x");
    open();
    click(*view, "Varsayılana dön");
    EXPECT_EQ(preferences->defaultAutoTypeSequence(), AutoTypeService::defaultSequence);
    EXPECT_EQ(field(*view, sequenceName)->text(), "{USERNAME}{TAB}{PASSWORD}{ENTER}");
}

TEST_F(SettingsTest, typingInTheMiddleOfTheSequenceKeepsTheCursor) {
    open();
    auto* const sequence = field(*view, sequenceName);
    sequence->setFocus();
    sequence->setCursorPosition(10);
    QTest::keyClicks(sequence, "ab");
    EXPECT_EQ(preferences->defaultAutoTypeSequence(), "{USERNAME}ab{TAB}{PASSWORD}{ENTER}");
}

TEST_F(SettingsTest, changesFromElsewhereShow) {
    open();
    preferences->setClipboardTimeout(60);
    preferences->setDefaultAutoTypeSequence("{URL}");
    preferences->setHotKeyCode(1);
    EXPECT_TRUE(shows(*view, "60 sn"));
    EXPECT_EQ(slider().value(), 60);
    EXPECT_EQ(field(*view, sequenceName)->text(), "{URL}");
    EXPECT_NE(button(*view, "⌥⌘S"), nullptr);
}

TEST_F(SettingsTest, saysThatTypingIsAllowed) {
    open();
    EXPECT_TRUE(shows(*view, granted));
    EXPECT_TRUE(shows(*view, "Otomatik yazma kullanılabilir."));
    EXPECT_EQ(button(*view, "İzin ver…"), nullptr);
}

TEST_F(SettingsTest, saysThatTypingIsNotAllowedAndAsksForIt) {
    desktop.keyboard.permission = false;
    open();
    EXPECT_TRUE(shows(*view, needed));
    EXPECT_TRUE(shows(*view, "İzin olmadan tuş vuruşları gönderilemez."));
    EXPECT_EQ(desktop.keyboard.permissionRequests, 0);
    click(*view, "İzin ver…");
    EXPECT_EQ(desktop.keyboard.permissionRequests, 1);
}

TEST_F(SettingsTest, aPermissionThatIsGivenElsewhereShowsByItself) {
    desktop.keyboard.permission = false;
    open();
    desktop.keyboard.permission = true;
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows(*view, granted); }, 2500));
    desktop.keyboard.permission = false;
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows(*view, needed); }, 2500));
}

TEST_F(SettingsTest, nothingIsAskedWhileTheWindowIsClosed) {
    open();
    view->hide();
    const int asked = desktop.keyboard.permissionQuestions;
    QTest::qWait(1700);
    EXPECT_EQ(desktop.keyboard.permissionQuestions, asked);
    view->show();
    EXPECT_GT(desktop.keyboard.permissionQuestions, asked);
}

TEST_F(SettingsTest, theHotKeyCanBeReset) {
    preferences->setHotKeyCode(40);
    preferences->setHotKeyModifiers(hotKeyShift);
    hotKey.registerGlobalHotKey();
    open();
    click(*view, "Varsayılana dön  (⌘⌥A)");
    EXPECT_EQ(preferences->hotKeyCode(), 0U);
    EXPECT_EQ(preferences->hotKeyModifiers(), 2304U);
    EXPECT_NE(button(*view, "⌥⌘A"), nullptr);
    EXPECT_EQ(desktop.hotKeys.registered.begin()->second, HotKey());
}

TEST_F(SettingsTest, aKeyWithoutModifiersIsReportedUnderTheRecorderAndScrolledTo) {
    open();
    view->resize(400, 360);
    EXPECT_FALSE(shows(*view, rejected));
    click(*view, "⌥⌘A");
    QTest::keyClick(&*view, Qt::Key_A);
    auto* const message = find<QLabel>(*view, rejected);
    ASSERT_NE(message, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return message->visibleRegion().boundingRect() == message->rect(); }));
    QTest::keyClick(&*view, Qt::Key_K, Qt::ControlModifier);
    EXPECT_TRUE(shows(*view, rejected)) << "until the next recording starts";
    EXPECT_NE(button(*view, "⌘K"), nullptr);
    click(*view, "⌘K");
    EXPECT_FALSE(shows(*view, rejected));
}

constexpr QSize wholePage(520, 880);

TEST_F(SettingsTest, showsAllWhereThereIsRoomAndScrollsElsewhere) {
    open();
    EXPECT_EQ(view->sizeHint(), QSize(520, 620));
    EXPECT_EQ(view->minimumSize(), QSize(400, 360));
    view->resize(wholePage);  // which this screen may have no room for
    QCoreApplication::processEvents();
    auto* const bar = view->findChild<ScrollPage*>()->verticalScrollBar();
    EXPECT_EQ(bar->maximum(), 0);
    const int cardEnd = field(*view, sequenceName)->mapTo(&*view, field(*view, sequenceName)->rect().topRight()).x();
    view->resize(520, 400);
    QCoreApplication::processEvents();
    EXPECT_GT(bar->maximum(), 0);
    EXPECT_EQ(field(*view, sequenceName)->mapTo(&*view, field(*view, sequenceName)->rect().topRight()).x(), cardEnd)
        << "the bar narrows nothing";
}

TEST_F(SettingsTest, aRecordingMovesNothingAndSaysHowToGiveItUpInTheResetsPlace) {
    open();
    view->resize(wholePage);
    QCoreApplication::processEvents();
    auto* const recorder = view->findChild<HotKeyRecorder*>();
    auto* const reset = button(*view, "Varsayılana dön  (⌘⌥A)");
    const auto placeOf = [&](const QWidget& widget) { return QRect(widget.mapTo(&*view, QPoint()), widget.size()); };
    const QRect recorderPlace = placeOf(*recorder);
    const QRect resetPlace = placeOf(*reset);
    EXPECT_EQ(recorderPlace.center().y(), resetPlace.center().y()) << "they stand side by side";
    EXPECT_FALSE(shows(*view, "esc ile vazgeç"));

    recorder->click();
    QCoreApplication::processEvents();

    ASSERT_TRUE(shows(*view, "esc ile vazgeç"));
    EXPECT_FALSE(reset->isVisible());
    EXPECT_EQ(placeOf(*recorder), recorderPlace);
    EXPECT_TRUE(resetPlace.contains(placeOf(*find<QLabel>(*view, "esc ile vazgeç"))));
    EXPECT_EQ(view->findChild<ScrollPage*>()->verticalScrollBar()->maximum(), 0);

    QTest::keyClick(recorder, Qt::Key_Escape);
    QCoreApplication::processEvents();

    EXPECT_FALSE(shows(*view, "esc ile vazgeç"));
    EXPECT_EQ(placeOf(*recorder), recorderPlace);
    EXPECT_EQ(placeOf(*reset), resetPlace);
}

TEST_F(SettingsTest, theWheelScrollsPastTheSliderUntilItHasTheFocus) {
    open();
    view->resize(400, 360);
    field(*view, sequenceName)->setFocus();
    QCoreApplication::processEvents();
    const auto turn = [&] {
        const QPointF middle = slider().rect().center();
        QWheelEvent up(middle, slider().mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                       Qt::NoScrollPhase, false);
        QApplication::sendEvent(&slider(), &up);
    };
    turn();
    EXPECT_EQ(preferences->clipboardTimeout(), 12);
    slider().setFocus(Qt::ActiveWindowFocusReason);
    turn();
    EXPECT_EQ(preferences->clipboardTimeout(), 12) << "the window gave it the focus, not the user";
    slider().clearFocus();
    slider().setFocus(Qt::TabFocusReason);
    turn();
    EXPECT_GT(preferences->clipboardTimeout(), 12);
}

TEST_F(SettingsTest, theWheelOverTheSliderChangesNothingWhereThePageHasNoNeedToScroll) {
    open();
    view->resize(520, 1200);
    field(*view, sequenceName)->setFocus();
    QCoreApplication::processEvents();
    const QPointF middle = slider().rect().center();
    QWheelEvent up(middle, slider().mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                   false);
    QApplication::sendEvent(&slider(), &up);
    EXPECT_EQ(preferences->clipboardTimeout(), 12);
}

TEST_F(SettingsTest, theWheelTurnsASliderThatWasClicked) {
    open();
    QTest::mouseClick(&slider(), Qt::LeftButton, {}, slider().rect().center());
    const auto clicked = preferences->clipboardTimeout();
    const QPointF middle = slider().rect().center();
    QWheelEvent up(middle, slider().mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                   false);
    slider().setFocus(Qt::MouseFocusReason);
    QApplication::sendEvent(&slider(), &up);
    EXPECT_GT(preferences->clipboardTimeout(), clicked);
}

TEST_F(SettingsTest, theFocusOfTheSliderIsAtItsKnob) {
    open();
    view->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&*view));
    FocusRing::install(&*view);
    slider().setFocus(Qt::TabFocusReason);
    QTest::keyClick(&slider(), Qt::Key_Right);
    const auto* const ring = view->findChild<FocusRing*>();
    ASSERT_NE(ring, nullptr);
    EXPECT_EQ(ring->width(), ring->height()) << "round as the knob, and no box around the track";
    EXPECT_LT(ring->width(), 30);
    const int before = ring->x();

    QTest::keyClick(&slider(), Qt::Key_End);

    EXPECT_GT(ring->x(), before) << "it goes with the knob";
    EXPECT_EQ(ring->width(), ring->height());
}

TEST_F(SettingsTest, aCombinationThatIsInForceHasNoNote) {
    hotKey.registerGlobalHotKey();
    open();
    EXPECT_FALSE(shows(*view, notInForce));
    EXPECT_EQ(heardOf("⌥⌘A"), "Ctrl+Alt+A|");
}

TEST_F(SettingsTest, aCombinationThatAnotherProgramHasIsSaidUntilItIsFree) {
    desktop.hotKeys.grants = false;
    hotKey.registerGlobalHotKey();
    open();
    EXPECT_TRUE(shows(*view, notInForce));
    EXPECT_EQ(heardOf("⌥⌘A"), "Ctrl+Alt+A|" + notInForce);
    EXPECT_EQ(state->lastError(), std::nullopt) << "it is no error";

    desktop.hotKeys.grants = true;
    EXPECT_TRUE(QTest::qWaitFor([&] { return !shows(*view, notInForce); }));
    EXPECT_TRUE(hotKey.isRegistered()) << "it was tried again";
}

TEST_F(SettingsTest, whetherACombinationIsInForceFollowsItsChange) {
    hotKey.registerGlobalHotKey();
    open();
    desktop.hotKeys.grants = false;
    preferences->setHotKeyCode(12);
    EXPECT_TRUE(shows(*view, notInForce));

    desktop.hotKeys.grants = true;
    click(*view, "Varsayılana dön  (⌘⌥A)");
    EXPECT_FALSE(shows(*view, notInForce));
}

TEST_F(SettingsTest, theKeysAreNamedByThePresentLayout) {
    open();
    EXPECT_EQ(heardOf("⌥⌘A"), "Ctrl+Alt+A|");
    desktop.layout.select({{{0, KeyboardLayout::Modifiers::none}, "u"}, {{0, KeyboardLayout::Modifiers::shift}, "U"}});
    EXPECT_TRUE(QTest::qWaitFor([&] { return heardOf("⌥⌘A") == "Ctrl+Alt+U|"; }));
    EXPECT_EQ(heardOf("Varsayılana dön  (⌘⌥A)"), "Varsayılana dön  (Ctrl+Alt+U)|");
}

TEST_F(SettingsTest, nothingAsksForAPermissionThatCannotBeGiven) {
    desktop.keyboard.permission = false;
    desktop.keyboard.canBeAsked = false;
    open();
    EXPECT_TRUE(shows(*view, needed));
    EXPECT_TRUE(shows(*view, "İzin olmadan tuş vuruşları gönderilemez."));
    EXPECT_EQ(button(*view, "İzin ver…"), nullptr);
}

TEST_F(SettingsTest, closesByItsKeys) {
    for (const auto& [key, modifiers] :
         {std::pair{Qt::Key_Escape, Qt::NoModifier}, std::pair{Qt::Key_W, Qt::ControlModifier}}) {
        open();
        view->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&*view));
        QTest::keyClick(&*view, key, modifiers);
        EXPECT_FALSE(view->isVisible());
    }
}

TEST_F(SettingsTest, eachStopOfTabHasAName) {
    desktop.keyboard.permission = false;
    open();
    QStringList stops;
    for (auto* next = view->nextInFocusChain(); next != &*view; next = next->nextInFocusChain())
        if ((next->focusPolicy() & Qt::TabFocus) != 0 && next->isVisible() && next->isEnabled())
            stops.append(QAccessible::queryAccessibleInterface(next)->text(QAccessible::Name));
    EXPECT_EQ(stops,
              (QStringList{"Otomatik temizleme", "10 sn", "12 sn", "30 sn", "60 sn", sequenceName, "Varsayılana dön",
                           "İzin ver…", "Ctrl+Alt+A", "Varsayılana dön  (Ctrl+Alt+A)", "Boştayken kilitle", "Kapalı",
                           "5 dk", "15 dk", "30 dk", "Oturum kilitlenince kasayı da kilitle"}));
}

/// The settings of the program's window, opened by its command.
class SettingsWindowTest : public WindowTest {
protected:
    MainWindow window{environment};

    SettingsWindowTest() { window.show(); }

    void openByCommand() {
        for (auto* const action : window.findChildren<QAction*>())
            if (action->text() == "Ayarlar…")
                action->trigger();
        QCoreApplication::processEvents();
    }
    /// Whether the program ends by itself.
    static bool endsWithin(int milliseconds) {
        constexpr int stillRunning = 1;
        QTimer patience;  // which ends here: later it would end the panel of another test
        QObject::connect(&patience, &QTimer::timeout, &patience, [] { QCoreApplication::exit(stillRunning); });
        patience.start(milliseconds);
        return QApplication::exec() != stillRunning;
    }
    QList<SettingsView*> opened() const { return window.findChildren<SettingsView*>(); }
};

TEST_F(SettingsWindowTest, isOpenedOnceByTheCommand) {
    openByCommand();
    ASSERT_EQ(opened().size(), 1);
    EXPECT_TRUE(opened()[0]->isVisible());
    EXPECT_TRUE(opened()[0]->isWindow());
    openByCommand();
    EXPECT_EQ(opened().size(), 1);
}

TEST_F(SettingsWindowTest, isOpenedAgainAfterItWasClosed) {
    openByCommand();
    opened()[0]->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(opened().isEmpty());
    openByCommand();
    EXPECT_EQ(opened().size(), 1);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(SettingsWindowTest, opensInTheMiddleOfTheProgramsWindowAndInsideTheScreen) {
    window.move(100, 150);
    QCoreApplication::processEvents();
    openByCommand();
    EXPECT_EQ(opened()[0]->frameGeometry().center(), window.frameGeometry().center());
    opened()[0]->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    const QRect screen = window.screen()->availableGeometry();
    window.move(screen.bottomRight());
    QCoreApplication::processEvents();
    openByCommand();
    EXPECT_EQ(opened()[0]->frameGeometry().bottomRight(), screen.bottomRight());
}

TEST_F(SettingsWindowTest, closesWithTheProgramsWindowWhichEndsTheProgram) {
    openByCommand();
    QTimer::singleShot(0, &window, [&] { window.close(); });
    EXPECT_TRUE(endsWithin(3000));
    for (const auto* const settings : opened())
        EXPECT_FALSE(settings->isVisible());
}

TEST_F(SettingsWindowTest, locksByTheProgramsKey) {
    unlock();
    openByCommand();
    opened()[0]->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(opened()[0]));
    QTest::keyClick(opened()[0], Qt::Key_L, Qt::ControlModifier);
    EXPECT_TRUE(state->isLocked());
}

TEST_F(SettingsWindowTest, quitsByTheProgramsKey) {
    openByCommand();
    opened()[0]->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(opened()[0]));
    QTest::keyClick(opened()[0], Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(SettingsWindowTest, closingItDoesNotEndTheProgram) {
    openByCommand();
    QTimer::singleShot(0, &window, [&] { opened()[0]->close(); });
    EXPECT_FALSE(endsWithin(200));
    EXPECT_TRUE(window.isVisible());
}

}  // namespace
