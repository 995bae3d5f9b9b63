// SPDX-License-Identifier: MIT
#include "app/ui/components/ScrollPage.h"
#include "app/ui/components/SelectableSecretText.h"
#include "app/ui/generator/PasswordGeneratorView.h"
#include "tests/app/ui/WindowProbe.h"
#include "tests/app/ui/WindowTest.h"

#include <QAccessible>
#include <QApplication>
#include <QScrollBar>
#include <QSlider>

#include <algorithm>
#include <set>

namespace {

using namespace WindowProbe;
using Options = PasswordGenerator::Options;

const QStringList setNames{"Büyük harf  A–Z", "Küçük harf  a–z", "Rakam  0–9", "Sembol  !@#$…"};
const QString ambiguous = "Karışabilecek karakterleri ele  (l 1 I O 0)";
const QString warning = "En az bir karakter kümesi seçmelisin.";

class PasswordGeneratorViewTest : public WindowTest {
protected:
    QWidget window;
    SheetHost host{nullptr, &window};
    PasswordGeneratorView* view = nullptr;

    PasswordGeneratorViewTest() {
        unlock();
        window.resize(1020, 680);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    void open(const std::optional<UUID>& target = std::nullopt) {
        state->setRoute(AppState::Route::generator(target));
        view = new PasswordGeneratorView(environment, target);
        host.present(view);
        QCoreApplication::processEvents();
    }
    SelectableSecretText& preview() { return *view->findChild<SelectableSecretText*>(); }
    QString shown() { return QAccessible::queryAccessibleInterface(&preview())->text(QAccessible::Name); }
    QString password() {
        if (!preview().isRevealed())
            click(*view, "Göster");
        return shown();
    }
    QSlider& slider() { return *find<QSlider>(*view, "Uzunluk"); }
    void switchOffAllSets() {
        for (const auto& name : setNames)
            if (button(*view, name)->isChecked())
                click(*view, name);
    }
    QStringList checkedLengths() {
        QStringList checked;
        for (const char* const length : {"12", "16", "20", "32", "64"})
            if (button(*view, length)->isChecked())
                checked.append(length);
        return checked;
    }
    bool isInAlphabet(const QString& text, std::string_view alphabet) {
        return std::ranges::all_of(text.toStdString(), [&](char c) { return alphabet.find(c) != alphabet.npos; });
    }
    void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
};

TEST_F(PasswordGeneratorViewTest, saysWhatItIsAndWhatEachControlIs) {
    open();
    for (const char* const text : {"Parola üreteci", "Önizleme", "Uzunluk", "Karakter kümesi"})
        EXPECT_TRUE(shows(*view, text)) << text;
    for (const QString& text :
         setNames + QStringList{ambiguous, "Kopyala", "Yeniden üret", "Göster", "Kapat", "12", "16", "20", "32", "64"})
        EXPECT_NE(button(*view, text), nullptr) << qPrintable(text);
}

TEST_F(PasswordGeneratorViewTest, thePrimaryButtonIsNamedAfterWhereThePasswordGoes) {
    open();
    EXPECT_NE(button(*view, "Panoya kopyala"), nullptr);
    EXPECT_EQ(button(*view, "Kayda uygula"), nullptr);
    open(bank().id);
    EXPECT_NE(button(*view, "Kayda uygula"), nullptr);
    EXPECT_EQ(button(*view, "Panoya kopyala"), nullptr);
}

TEST_F(PasswordGeneratorViewTest, opensHiddenWithADotForEachCharacter) {
    preferences->setGeneratorOptions({.length = 33});
    open();
    EXPECT_EQ(shown(), QString(33, QChar(0x2022)));
    click(*view, "Göster");
    EXPECT_EQ(shown().size(), 33);
    EXPECT_FALSE(shown().contains(QChar(0x2022)));
    click(*view, "Gizle");
    EXPECT_EQ(shown(), QString(33, QChar(0x2022)));
}

TEST_F(PasswordGeneratorViewTest, takesItsOptionsFromThePreferences) {
    const Options stored{.length = 13, .upper = false, .lower = false, .symbols = false, .excludeAmbiguous = true};
    preferences->setGeneratorOptions(stored);
    open();
    EXPECT_EQ(slider().value(), 13);
    EXPECT_TRUE(shows(*view, "13"));
    EXPECT_FALSE(button(*view, setNames[0])->isChecked());
    EXPECT_TRUE(button(*view, setNames[2])->isChecked());
    EXPECT_TRUE(button(*view, ambiguous)->isChecked());
    EXPECT_TRUE(isInAlphabet(password(), "23456789"));
    EXPECT_EQ(preferences->generatorOptions(), stored) << "showing is not choosing";
}

TEST_F(PasswordGeneratorViewTest, eachStepOfTheSliderIsStoredAndGivesAFreshPassword) {
    open();
    const QString before = password();
    slider().setFocus();
    QTest::keyClick(&slider(), Qt::Key_Right);
    EXPECT_EQ(preferences->generatorOptions().length, 21);
    EXPECT_TRUE(shows(*view, "21"));
    EXPECT_EQ(password().size(), 21);
    EXPECT_FALSE(password().startsWith(before));
}

TEST_F(PasswordGeneratorViewTest, theSliderGoesFromSixToAHundredAndTwentyEight) {
    open();
    for (const auto& [key, length] : {std::pair{Qt::Key_Home, 6}, std::pair{Qt::Key_PageUp, 18},
                                      std::pair{Qt::Key_End, 128}, std::pair{Qt::Key_PageDown, 116}}) {
        QTest::keyClick(&slider(), key);
        EXPECT_EQ(preferences->generatorOptions().length, length);
        EXPECT_EQ(password().size(), length);
    }
}

TEST_F(PasswordGeneratorViewTest, theWheelTurnsTheSlider) {
    open();
    slider().clearFocus();
    slider().setFocus(Qt::TabFocusReason);
    const QPointF middle = slider().rect().center();
    QWheelEvent up(middle, slider().mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                   false);
    QApplication::sendEvent(&slider(), &up);
    EXPECT_GT(preferences->generatorOptions().length, 20);
}

TEST_F(PasswordGeneratorViewTest, aQuickButtonSetsTheLengthAndIsMarked) {
    open();
    EXPECT_EQ(checkedLengths(), QStringList{"20"});
    for (const char* const length : {"12", "16", "20", "32", "64"}) {
        click(*view, length);
        EXPECT_EQ(preferences->generatorOptions().length, QString(length).toInt());
        EXPECT_EQ(checkedLengths(), QStringList{length});
        click(*view, length);
        EXPECT_EQ(checkedLengths(), QStringList{length}) << "pressed once more, it stays";
    }
}

TEST_F(PasswordGeneratorViewTest, aLengthWithoutAQuickButtonMarksNone) {
    open();
    slider().setValue(13);
    EXPECT_EQ(checkedLengths(), QStringList{});
}

TEST_F(PasswordGeneratorViewTest, eachToggleReplacesThePasswordAlsoWhenSwitchedBack) {
    open();
    for (const QString& name : setNames + QStringList{ambiguous})
        for (int times = 0; times < 2; ++times) {
            const QString before = password();
            click(*view, name);
            EXPECT_NE(password(), before) << qPrintable(name);
        }
}

TEST_F(PasswordGeneratorViewTest, eachSwitchIsForItsOwnSet) {
    open();
    switchOffAllSets();
    const std::pair<QString, std::string_view> sets[] = {{setNames[0], PasswordGenerator::upperChars},
                                                         {setNames[1], PasswordGenerator::lowerChars},
                                                         {setNames[2], PasswordGenerator::digitChars},
                                                         {setNames[3], PasswordGenerator::symbolChars}};
    for (const auto& [name, alphabet] : sets) {
        click(*view, name);
        EXPECT_EQ(password().size(), 20);
        EXPECT_TRUE(isInAlphabet(password(), alphabet)) << qPrintable(name);
        click(*view, name);
    }
}

TEST_F(PasswordGeneratorViewTest, withoutAnySetThereIsNoPasswordButAWarning) {
    open();
    EXPECT_FALSE(shows(*view, warning));
    switchOffAllSets();
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(password(), "");
    EXPECT_TRUE(shows(*view, warning));
    EXPECT_FALSE(button(*view, "Panoya kopyala")->isEnabled());
    EXPECT_EQ(preferences->generatorOptions(),
              (Options{.upper = false, .lower = false, .digits = false, .symbols = false}));

    open();
    EXPECT_TRUE(shows(*view, warning)) << "the next opening";
    click(*view, ambiguous);
    EXPECT_EQ(shown(), "") << "what is left out is no set";
    EXPECT_FALSE(button(*view, "Panoya kopyala")->isEnabled());
    press(Qt::Key_Return);
    EXPECT_TRUE(state->route()) << "nothing to confirm";

    click(*view, setNames[2]);
    EXPECT_FALSE(shows(*view, warning));
    EXPECT_TRUE(button(*view, "Panoya kopyala")->isEnabled());
}

TEST_F(PasswordGeneratorViewTest, anotherOneCanBeAskedFor) {
    open();
    const QString before = password();
    click(*view, "Yeniden üret");
    EXPECT_NE(password(), before);
    EXPECT_EQ(password().size(), 20);
}

TEST_F(PasswordGeneratorViewTest, copyingLeavesTheSheetOpen) {
    open();
    click(*view, "Kopyala");
    EXPECT_EQ(pasteboard.text(), password().toStdString());
    EXPECT_TRUE(clipboard.hasPendingSecret());
    EXPECT_TRUE(state->route());
}

TEST_F(PasswordGeneratorViewTest, copyingByThePrimaryButtonClosesTheSheet) {
    open();
    const auto made = password().toStdString();
    click(*view, "Panoya kopyala");
    EXPECT_EQ(pasteboard.text(), made);
    EXPECT_TRUE(clipboard.hasPendingSecret());
    EXPECT_FALSE(state->route());
}

TEST_F(PasswordGeneratorViewTest, returnIsThePrimaryButtonAlsoAfterAClickOnAnotherOne) {
    open();
    click(*view, "Yeniden üret");
    const auto made = password().toStdString();
    press(Qt::Key_Return);
    EXPECT_EQ(pasteboard.text(), made);
    EXPECT_FALSE(state->route());
}

TEST_F(PasswordGeneratorViewTest, escapeAndTheCloseButtonChangeNothing) {
    const auto password = bank().password.value();
    for (const bool byKey : {true, false}) {
        open(bank().id);
        if (byKey)
            press(Qt::Key_Escape);
        else
            click(*view, "Kapat");
        EXPECT_FALSE(state->route());
        EXPECT_EQ(bank().password.value(), password);
        EXPECT_FALSE(clipboard.hasPendingSecret());
        EXPECT_FALSE(state->canUndo());
    }
}

TEST_F(PasswordGeneratorViewTest, applyingWritesThePasswordAsOneUndoableEdit) {
    const auto before = bank();
    clock.advance(std::chrono::hours(1));
    open(before.id);
    const auto made = password().toStdString();
    click(*view, "Kayda uygula");

    EXPECT_EQ(bank().password.value(), made);
    EXPECT_EQ(bank().title, before.title);
    EXPECT_EQ(bank().modified, clock.now());
    ASSERT_EQ(bank().historyItems.size(), before.historyItems.size() + 1);
    EXPECT_EQ(bank().historyItems[before.historyItems.size()].password, before.password);
    EXPECT_EQ(state->undoLabel(), "Kaydı Düzenle");
    EXPECT_TRUE(state->isDirty());
    EXPECT_FALSE(state->route());
    EXPECT_FALSE(clipboard.hasPendingSecret());

    state->undo();
    EXPECT_EQ(bank().password, before.password);
    EXPECT_FALSE(state->canUndo());
}

TEST_F(PasswordGeneratorViewTest, anEntryThatIsGoneIsNotAppliedTo) {
    open(bank().id);
    state->deleteEntries({bank().id});
    const auto label = state->undoLabel();
    click(*view, "Kayda uygula");
    EXPECT_EQ(state->undoLabel(), label);
    EXPECT_FALSE(state->route());
}

TEST_F(PasswordGeneratorViewTest, aLockedVaultIsNotAppliedTo) {
    open(bank().id);
    state->lock();
    state->setRoute(AppState::Route::generator(std::nullopt));
    click(*view, "Kayda uygula");
    EXPECT_FALSE(state->database());
    EXPECT_FALSE(state->canUndo());
    EXPECT_FALSE(state->route());
}

TEST_F(PasswordGeneratorViewTest, aStoredLengthThatNoSliderGivesIsShownAndStays) {
    preferences->setGeneratorOptions({.length = 200});
    open();
    EXPECT_TRUE(shows(*view, "200"));
    EXPECT_EQ(password().size(), 200);
    click(*view, setNames[3]);
    EXPECT_EQ(preferences->generatorOptions().length, 200);
}

TEST_F(PasswordGeneratorViewTest, nothingMovesFromTheShortestToTheLongestPassword) {
    open();
    std::set<int> places;
    for (const int length : {6, 38, 39, 64, 78, 128}) {
        slider().setValue(length);
        password();
        QCoreApplication::processEvents();
        places.insert(slider().mapTo(view, QPoint()).y());
    }
    EXPECT_EQ(places.size(), 1U);
}

TEST_F(PasswordGeneratorViewTest, allOfItFitsTheUsualWindowAndTheWarningIsSeenThere) {
    open();
    auto* const bar = view->findChild<ScrollPage*>()->verticalScrollBar();
    EXPECT_EQ(bar->maximum(), 0);
    switchOffAllSets();
    auto* const label = find<QLabel>(*view, warning);
    EXPECT_EQ(label->visibleRegion().boundingRect(), label->rect());

    window.resize(1020, 800);
    QCoreApplication::processEvents();
    EXPECT_EQ(bar->maximum(), 0) << "where there is room for the warning too";
    EXPECT_EQ(view->sizeHint().width(), 460);
    EXPECT_EQ(view->minimumSizeHint(), QSize(380, 320));
}

TEST_F(PasswordGeneratorViewTest, eachStopOfTabHasANameInTheOrderOfReading) {
    open();
    EXPECT_EQ(QApplication::focusWidget(), &slider()) << "at first";
    preview().setFocus();
    QStringList stops;
    for (int i = 0; i < 17; ++i) {
        stops.append(QAccessible::queryAccessibleInterface(QApplication::focusWidget())->text(QAccessible::Name));
        press(Qt::Key_Tab);
    }
    EXPECT_EQ(stops, (QStringList{QString(20, QChar(0x2022)), "Kopyala", "Yeniden üret", "Uzunluk", "12", "16", "20",
                                  "32", "64"} +
                      setNames + QStringList{ambiguous, "Kapat", "Panoya kopyala", "Göster"}));
}

TEST_F(PasswordGeneratorViewTest, aSelectedPartIsCopiedAsASecret) {
    open();
    const QString made = password();
    preview().setFocus();
    QTest::keyClick(&preview(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&preview(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(pasteboard.text(), made.toStdString());
    EXPECT_TRUE(clipboard.hasPendingSecret());

    QTest::keyClick(&preview(), Qt::Key_Left, Qt::ShiftModifier);
    QTest::keyClick(&preview(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(pasteboard.text(), made.left(19).toStdString());
    QTest::keyClick(&preview(), Qt::Key_Home, Qt::ShiftModifier);
    EXPECT_FALSE(preview().hasSelection());
    QTest::keyClick(&preview(), Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&preview(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(pasteboard.text(), made.left(1).toStdString());
    QTest::keyClick(&preview(), Qt::Key_End, Qt::ShiftModifier);
    QTest::keyClick(&preview(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(pasteboard.text(), made.toStdString());
}

TEST_F(PasswordGeneratorViewTest, theMouseSelectsFromWhereItIsPressedToWhereItIsReleased) {
    open();
    const QString made = password();
    const int middle = preview().height() / 2;
    QTest::mousePress(&preview(), Qt::LeftButton, {}, {0, middle});
    QMouseEvent move(QEvent::MouseMove, QPointF(41, middle), preview().mapToGlobal(QPointF(41, middle)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&preview(), &move);
    QTest::mouseRelease(&preview(), Qt::LeftButton, {}, {41, middle});
    QTest::keyClick(&preview(), Qt::Key_C, Qt::ControlModifier);
    const auto copied = QString::fromStdString(pasteboard.text());
    EXPECT_GE(copied.size(), 3);
    EXPECT_TRUE(made.startsWith(copied));

    QTest::mouseDClick(&preview(), Qt::LeftButton);
    QTest::keyClick(&preview(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(pasteboard.text(), made.toStdString());
}

TEST_F(PasswordGeneratorViewTest, dotsAreNotCopiedAndAFreshPasswordIsNotSelected) {
    open();
    preview().setFocus();
    QTest::keyClick(&preview(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(preview().hasSelection());
    QTest::keyClick(&preview(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_FALSE(clipboard.hasPendingSecret());
    click(*view, "Yeniden üret");
    EXPECT_FALSE(preview().hasSelection());
}

}  // namespace
