// SPDX-License-Identifier: MIT
#include "app/ui/components/Button.h"
#include "app/ui/components/Popover.h"
#include "app/ui/components/SecretField.h"
#include "app/ui/components/Sheet.h"
#include "app/ui/components/TextArea.h"
#include "app/ui/components/Toggle.h"
#include "app/ui/theme/Theme.h"
#include "tests/app/ui/WindowProbe.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

using namespace WindowProbe;

/// A window with one field below, and a host for sheets above.
class SheetTest : public ::testing::Test {
protected:
    QWidget window;
    QWidget* below = new QWidget(&window);
    TextField* fieldBelow = new TextField("Altta", below);
    SheetHost* host = new SheetHost(below, &window);
    int confirmed = 0;
    int cancelled = 0;

    SheetTest() {
        window.resize(800, 600);
        window.show();
        window.activateWindow();
        fieldBelow->setFocus();
        QCoreApplication::processEvents();
    }

    /// A sheet with a field, a field of lines, a switch and a button that counts as confirmed a hundredfold.
    SheetScaffold* present() {
        auto* const sheet = new SheetScaffold("Deneme", "Vazgeç", "Tamam");
        sheet->content()->addWidget(new TextField("Alan"));
        sheet->content()->addWidget(new TextArea("Notlar"));
        sheet->content()->addWidget(new Toggle("Anahtar"));
        auto* const act = new Button("Yap");
        QObject::connect(act, &Button::clicked, sheet, [this] { confirmed += 100; });
        sheet->content()->addWidget(act);
        QObject::connect(sheet, &SheetScaffold::confirmed, sheet, [this] { ++confirmed; });
        QObject::connect(sheet, &SheetScaffold::cancelled, sheet, [this] { ++cancelled; });
        host->present(sheet);
        QCoreApplication::processEvents();
        return sheet;
    }
    void focus(const QString& name) {
        for (auto* const widget : window.findChildren<QWidget*>())
            if (widget->isVisible() && nameOf(*widget) == name && widget->focusPolicy() != Qt::NoFocus)
                widget->setFocus();
        ASSERT_EQ(focusName(), name);
        QCoreApplication::processEvents();
    }
    void pressIn(const QString& name, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        focus(name);
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    static QString focusName() {
        return QApplication::focusWidget() ? nameOf(*QApplication::focusWidget()) : QString();
    }
};

TEST_F(SheetTest, theFirstFieldHasTheFocusAndWhatLiesBelowHasNone) {
    present();
    EXPECT_EQ(focusName(), "Alan");
    EXPECT_FALSE(fieldBelow->isEnabled());
    QTest::mouseClick(host, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_NE(host->sheet(), nullptr) << "a click beside the sheet means nothing";
}

TEST_F(SheetTest, theFocusComesBackWithTheSheetsEnd) {
    present();
    host->dismiss();
    EXPECT_EQ(QApplication::focusWidget(), fieldBelow);
    EXPECT_TRUE(fieldBelow->isEnabled());
    EXPECT_EQ(host->sheet(), nullptr);
}

TEST_F(SheetTest, theFocusComesBackFromASheetThatTookAnothersPlace) {
    present();
    present();
    host->dismiss();
    EXPECT_EQ(QApplication::focusWidget(), fieldBelow);
}

TEST_F(SheetTest, aFormerFocusThatIsGoneIsNotLookedFor) {
    present();
    delete fieldBelow;
    host->dismiss();
    EXPECT_EQ(host->sheet(), nullptr);
}

TEST_F(SheetTest, returnConfirmsWhereItMeansNothingElse) {
    present();
    pressIn("Alan", Qt::Key_Return);
    EXPECT_EQ(confirmed, 1);
    pressIn("Alan", Qt::Key_Enter);
    EXPECT_EQ(confirmed, 2);
    pressIn("Anahtar", Qt::Key_Return);
    EXPECT_EQ(confirmed, 3);
    pressIn("Notlar", Qt::Key_Return);
    EXPECT_EQ(confirmed, 3) << "a line of the notes";
    EXPECT_EQ(find<QPlainTextEdit>(window, "Notlar")->toPlainText(), "\n");
    pressIn("Yap", Qt::Key_Return);
    EXPECT_EQ(confirmed, 103) << "a button is pressed";
    pressIn("Vazgeç", Qt::Key_Return);
    EXPECT_EQ(cancelled, 1);
    EXPECT_EQ(confirmed, 103);
}

TEST_F(SheetTest, returnWithCtrlConfirmsEverywhere) {
    present();
    for (const auto* const name : {"Alan", "Notlar", "Anahtar", "Yap", "Vazgeç", "Tamam"}) {
        confirmed = 0;
        pressIn(name, Qt::Key_Return, Qt::ControlModifier);
        EXPECT_EQ(confirmed, 1) << name;
    }
    EXPECT_EQ(cancelled, 0);
}

TEST_F(SheetTest, escapeCancelsEverywhere) {
    present();
    int times = 0;
    for (const auto* const name : {"Alan", "Notlar", "Anahtar", "Yap", "Vazgeç", "Tamam"}) {
        pressIn(name, Qt::Key_Escape);
        EXPECT_EQ(cancelled, ++times) << name;
    }
    EXPECT_EQ(confirmed, 0);
}

TEST_F(SheetTest, whatCannotBeConfirmedIsConfirmedByNoKey) {
    present()->setConfirmEnabled(false);
    pressIn("Alan", Qt::Key_Return);
    pressIn("Notlar", Qt::Key_Return, Qt::ControlModifier);
    EXPECT_FALSE(button(window, "Tamam")->isEnabled());
    EXPECT_EQ(confirmed, 0);
}

TEST_F(SheetTest, tabGoesRoundWithinTheSheet) {
    present();
    for (const auto* const name : {"Alan", "Notlar", "Anahtar", "Yap", "Vazgeç", "Tamam", "Alan"}) {
        EXPECT_EQ(focusName(), name);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(focusName(), "Tamam");
}

TEST_F(SheetTest, theSheetIsAsLargeAsItLikesAndShrinksToItsLeast) {
    auto* const sheet = present();
    sheet->setSizes({380, 320}, {500, 400});
    QTest::qWait(Metric::motion.count() + 100);  // it comes up from a few points below
    for (const auto& [room, size] : {std::pair{QSize(900, 700), QSize(500, 400)},
                                     {QSize(520, 420), QSize(472, 372)},
                                     {QSize(400, 340), QSize(380, 320)},
                                     {QSize(300, 200), QSize(300, 200)}}) {
        window.resize(room);
        QCoreApplication::processEvents();
        EXPECT_EQ(sheet->size(), size) << room.width();
        EXPECT_TRUE(window.rect().contains(QRect(sheet->pos(), sheet->size())));
    }
}

TEST_F(SheetTest, theFieldWithTheFocusIsScrolledIntoView) {
    auto* const sheet = present();
    for (int i = 0; i < 30; ++i)
        sheet->content()->addWidget(new TextField("Alan " + QString::number(i)));
    QCoreApplication::processEvents();
    sheet->orderTabs();
    focus("Alan 29");
    QCoreApplication::processEvents();
    EXPECT_FALSE(QApplication::focusWidget()->visibleRegion().isEmpty());
    focus("Alan");
    EXPECT_FALSE(QApplication::focusWidget()->visibleRegion().isEmpty());
}

TEST_F(SheetTest, aScreenReaderHearsADialogAndItsName) {
    auto* const sheet = present();
    auto* const heard = QAccessible::queryAccessibleInterface(sheet);
    ASSERT_NE(heard, nullptr);
    EXPECT_EQ(heard->role(), QAccessible::Dialog);
    EXPECT_EQ(heard->text(QAccessible::Name), "Deneme");
}

TEST_F(SheetTest, aPopoverClosesWithAClickElsewhereAndKeepsTabInside) {
    present();
    auto* const anchor = find<QPushButton>(window, "Yap");
    auto* const popover = new Popover("Seçim", anchor);
    auto* const one = new Button("Bir");
    popover->content()->addWidget(one);
    popover->content()->addWidget(new Button("İki"));
    popover->open(one);
    EXPECT_EQ(focusName(), "Bir");
    QTest::keyClick(one, Qt::Key_Tab);
    EXPECT_EQ(focusName(), "İki");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(focusName(), "Bir");
    QTest::mouseClick(popover, Qt::LeftButton, {}, QPoint(2, 2));
    EXPECT_FALSE(popover->isVisible());
    EXPECT_EQ(focusName(), "Yap");
    EXPECT_EQ(cancelled + confirmed, 0);
}

TEST_F(SheetTest, aPopoverKeepsWithinTheWindowAndGoesWithItsControl) {
    present();
    window.resize(420, 360);
    QCoreApplication::processEvents();
    auto* const anchor = find<QPushButton>(window, "Yap");
    const QPointer<Popover> popover = new Popover("Seçim", anchor);
    auto* const content = new TextArea("Büyük");
    content->setMinimumSize(200, 180);
    popover->content()->addWidget(content);
    popover->open(content);
    EXPECT_TRUE(window.rect().contains(QRect(content->mapTo(&window, QPoint()), content->size())));
    host->dismiss();
    EXPECT_FALSE(popover->isVisible());
    for (int turn = 0; turn < 3; ++turn)  // the sheet, its button, and then the popover
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(popover, nullptr);
}

class SecretFieldTest : public ::testing::Test {
protected:
    SecretField field{"Parola"};
    std::string copied;  // as a secret

    SecretFieldTest() { field.show(); }

    void showSelectedSecret() {
        field.setCopying([this](std::string_view secret) { copied = secret; });
        QApplication::clipboard()->setText("önceki");
        field.setSecret("gizli");
        field.setRevealed(true);
        field.selectAll();
    }
};

TEST_F(SecretFieldTest, neitherDraggingNorPredictingNorUndoOffersTheSecret) {
    EXPECT_FALSE(field.dragEnabled());
    for (const bool isRevealed : {false, true}) {
        field.setRevealed(isRevealed);
        const auto hints = field.inputMethodHints();
        EXPECT_TRUE(hints.testFlag(Qt::ImhSensitiveData)) << isRevealed;
        EXPECT_TRUE(hints.testFlag(Qt::ImhNoPredictiveText)) << isRevealed;
        EXPECT_TRUE(hints.testFlag(Qt::ImhHiddenText)) << isRevealed;
    }
    field.setRevealed(false);
    QTest::keyClicks(&field, "gizli");
    field.setSecret("başka");
    field.setRevealed(true);
    EXPECT_FALSE(field.isUndoAvailable());
    field.undo();
    EXPECT_EQ(field.text(), "başka");
}

TEST_F(SecretFieldTest, theLettersOfAFormerSecretAreOverwritten) {
    field.setSecret(QString("giz") + "li");
    const QString shared = field.text();  // the field's own letters
    field.setSecret({});
    EXPECT_EQ(shared, QString(5, QChar()));
}

TEST_F(SecretFieldTest, theLettersAreOverwrittenWhenTheFieldGoes) {
    auto* const gone = new SecretField("Parola");
    QTest::keyClicks(gone, "gizli");
    const QString shared = gone->text();
    delete gone;
    EXPECT_EQ(shared, QString(5, QChar()));
}

TEST_F(SecretFieldTest, aShownSecretIsSelectedWithTheUsualKeys) {
    field.setSecret("bir iki");
    field.setRevealed(true);
    field.home(false);
    const auto selected = [&](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(&field, key, modifiers);
        return field.selectedText();
    };
    EXPECT_EQ(selected(Qt::Key_Right, Qt::ShiftModifier), "b");
    EXPECT_EQ(selected(Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier), "bir ");
    EXPECT_EQ(selected(Qt::Key_Left, Qt::ShiftModifier), "bir");
    EXPECT_EQ(selected(Qt::Key_End, Qt::ShiftModifier), "bir iki");
    EXPECT_EQ(selected(Qt::Key_Left, Qt::ShiftModifier | Qt::ControlModifier), "bir ");
    EXPECT_EQ(selected(Qt::Key_Home, Qt::ShiftModifier), "");
    EXPECT_EQ(selected(Qt::Key_A, Qt::ControlModifier), "bir iki");
    QTest::keyClick(&field, Qt::Key_X);
    EXPECT_EQ(field.text(), "x") << "what is selected is typed over";
}

TEST_F(SecretFieldTest, whatIsCopiedGoesWhereItIsSent) {
    QApplication::clipboard()->setText("önceki");
    field.setSecret("gizli");
    field.setRevealed(true);
    field.selectAll();
    QTest::keyClick(&field, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(&field, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(field.text(), "gizli") << "nowhere to go";

    field.setCopying([&](std::string_view secret) { copied = secret; });
    QTest::keyClick(&field, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copied, "gizli");
    EXPECT_EQ(field.text(), "gizli");
    copied.clear();
    QTest::keyClick(&field, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(copied, "gizli");
    EXPECT_EQ(field.text(), "");

    copied.clear();
    field.setSecret("gizli");
    field.setRevealed(false);
    field.selectAll();
    QTest::keyClick(&field, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copied, "") << "masked, nothing is copied";
    EXPECT_EQ(QApplication::clipboard()->text(), "önceki");
}

TEST_F(SecretFieldTest, theMenuCopiesTheSameWay) {
    showSelectedSecret();
    QContextMenuEvent wish(QContextMenuEvent::Keyboard, QPoint(5, 5), field.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&field, &wish);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr) << "it shows without a loop of its own, which a lock would leave without its field";
    for (auto* const action : menu->actions())
        if (action->text() == "Kopyala")
            action->trigger();
    menu->close();
    EXPECT_EQ(copied, "gizli");
    EXPECT_EQ(QApplication::clipboard()->text(), "önceki");
}

// Menus of the window call a field's verbs by their names.
TEST_F(SecretFieldTest, theVerbsThatAMenuCallsCopyTheSameWay) {
    showSelectedSecret();
    QMetaObject::invokeMethod(&field, "copy");
    EXPECT_EQ(copied, "gizli");
    copied.clear();
    QMetaObject::invokeMethod(&field, "cut");
    EXPECT_EQ(copied, "gizli");
    EXPECT_EQ(field.text(), "");
    EXPECT_EQ(QApplication::clipboard()->text(), "önceki");

    copied.clear();
    field.setSecret("gizli");
    field.setRevealed(false);
    field.selectAll();
    QMetaObject::invokeMethod(&field, "cut");
    EXPECT_EQ(copied, "");
    EXPECT_EQ(field.text(), "gizli");

    field.setMasking(false);
    field.selectAll();
    QMetaObject::invokeMethod(&field, "copy");
    EXPECT_EQ(copied, "");
    EXPECT_EQ(QApplication::clipboard()->text(), "gizli") << "which is none then";
}

TEST_F(SecretFieldTest, aLineThatIsDeletedAtOnceIsNotLeftOnTheClipboard) {
    QApplication::clipboard()->setText("önceki");
    for (const auto deletes : {QKeySequence::DeleteEndOfLine, QKeySequence::DeleteCompleteLine}) {
        field.setSecret("gizli");
        field.setRevealed(true);
        field.home(false);
        for (const auto& keys : QKeySequence::keyBindings(deletes))
            QTest::keySequence(&field, keys);
        EXPECT_EQ(QApplication::clipboard()->text(), "önceki");
    }
}

TEST_F(SecretFieldTest, theEyeShowsAndHides) {
    field.setSecret("gizli");
    EXPECT_EQ(field.displayText(), QString(5, QChar(0x2022)));
    click(field, "Göster");
    EXPECT_EQ(field.displayText(), "gizli");
    click(field, "Gizle");
    EXPECT_EQ(field.displayText(), QString(5, QChar(0x2022)));
}

TEST_F(SecretFieldTest, whatIsNoSecretShowsWithoutAnEye) {
    field.setSecret("açık");
    field.setRevealed(true);
    field.setMasking(false);
    EXPECT_EQ(field.displayText(), "açık");
    EXPECT_EQ(button(field, "Göster"), nullptr);
    EXPECT_EQ(button(field, "Gizle"), nullptr);
    field.setMasking(true);
    EXPECT_EQ(field.displayText(), QString(4, QChar(0x2022))) << "masked anew, whatever was shown before";
}

TEST(ToggleTest, aClickAnywhereAndTheSpaceKeyTurnIt) {
    Toggle toggle("Etkin");
    toggle.resize(300, 24);
    toggle.show();
    QTest::mouseClick(&toggle, Qt::LeftButton, {}, QPoint(150, 12));
    EXPECT_TRUE(toggle.isChecked());
    QTest::keyClick(&toggle, Qt::Key_Space);
    EXPECT_FALSE(toggle.isChecked());
}

TEST(ToggleTest, theSwitchStandsWhereItIsAskedTo) {
    Toggle toggle("");
    toggle.resize(300, 24);
    toggle.setChecked(true);
    const auto isOrange = [&](int x) { return toggle.grab().toImage().pixelColor(x, 12).red() > 200; };
    EXPECT_TRUE(isOrange(270));
    EXPECT_FALSE(isOrange(4));
    toggle.setSide(Toggle::Side::leading);
    EXPECT_TRUE(isOrange(4));
    EXPECT_FALSE(isOrange(270));
}

}  // namespace
