// SPDX-License-Identifier: MIT
#include "app/ui/rows/RowListView.h"
#include "app/ui/theme/Theme.h"
#include "app/ui/window/MainWindow.h"
#include "app/ui/window/RescueBanner.h"
#include "tests/app/ui/WindowProbe.h"
#include "tests/app/ui/WindowTest.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QRegularExpression>

#include <algorithm>

namespace {

using namespace WindowProbe;
using ::testing::ElementsAre;

const QString hint = "Geri getirirsen kasa o andaki hâline döner; bu adımı geri alabilirsin.";

/// The window of a vault whose last session left "Değişmiş" unsaved.
class RescueBannerTest : public WindowTest {
protected:
    MainWindow window{environment};

    RescueBannerTest() {
        unlock();
        rename("Değişmiş");
        state->prepare(otherFile);  // which keeps it
        state->prepare(vaultFile);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    void unlockAgain() {
        state->unlock("parola", std::nullopt);
        QCoreApplication::processEvents();
        ASSERT_TRUE(banner().isVisible());
    }

    RescueBanner& banner() { return *window.findChild<RescueBanner*>(); }
    QString heard() { return QAccessible::queryAccessibleInterface(&banner())->text(QAccessible::Name); }
    QString firstTitle() { return QString::fromStdString(state->database()->root.entries[0].title); }
    /// Whether the keyboard is where its keys do something to rows.
    bool isFocusInAList() { return qobject_cast<RowListView*>(window.focusWidget()) != nullptr; }
    void goTo(const QString& name) {
        for (int i = 0; i < 60 && nameOf(*window.focusWidget()) != name; ++i)
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        ASSERT_EQ(nameOf(*window.focusWidget()), name) << "it is no stop of Tab";
        ASSERT_TRUE(banner().isAncestorOf(window.focusWidget()));
    }
    static void press(const QWidget& button) {
        QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&button))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
    }
};

TEST_F(RescueBannerTest, saysWhatWasKeptAndWhatTheWaysOutDo) {
    unlockAgain();
    EXPECT_THAT(heard().toStdString(),
                ::testing::MatchesRegex("Bu kasanın [0-9]+ .+ [0-9]+ [0-9][0-9]:[0-9][0-9] tarihli, kaydedilmemiş "
                                        "değişiklikleri saklandı\\. Geri getirirsen kasa .+"));
    EXPECT_TRUE(shows(banner(), hint));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&banner())->role(), QAccessible::Notification);
    std::vector<std::string> buttons;
    for (auto* const button : banner().findChildren<QAbstractButton*>())
        buttons.push_back(button->text().toStdString());
    EXPECT_THAT(buttons, ElementsAre("Geri getir", "Sil"));
}

TEST_F(RescueBannerTest, leavesTheFocusInTheListWhenItAppears) {
    unlockAgain();
    EXPECT_TRUE(isFocusInAList());
}

TEST_F(RescueBannerTest, bringsBackByEachWayIn) {
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"pointer", [&] { click(banner(), "Geri getir"); }},
        {"Return",
         [&] {
             goTo("Geri getir");
             QTest::keyClick(window.focusWidget(), Qt::Key_Return);
         }},
        {"Enter",
         [&] {
             goTo("Geri getir");
             QTest::keyClick(window.focusWidget(), Qt::Key_Enter, Qt::KeypadModifier);
         }},
        {"Space",
         [&] {
             goTo("Geri getir");
             QTest::keyClick(window.focusWidget(), Qt::Key_Space);
         }},
        {"screen reader", [&] { press(*button(banner(), "Geri getir")); }}};
    unlockAgain();
    for (const auto& [name, bringBack] : ways) {
        EXPECT_EQ(firstTitle(), "Banka") << name;
        bringBack();
        EXPECT_TRUE(QTest::qWaitFor([&] { return firstTitle() == "Değişmiş"; })) << name;
        EXPECT_FALSE(banner().isVisible()) << name;
        EXPECT_TRUE(isFocusInAList()) << name;
        state->undo();
        QCoreApplication::processEvents();
        EXPECT_TRUE(banner().isVisible()) << name << ": it is to be decided on again";
    }
}

TEST_F(RescueBannerTest, deletesByEachWayIn) {
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"pointer", [&] { click(banner(), "Sil"); }},
        {"Return",
         [&] {
             goTo("Sil");
             QTest::keyClick(window.focusWidget(), Qt::Key_Return);
         }},
        {"Space",
         [&] {
             goTo("Sil");
             QTest::keyClick(window.focusWidget(), Qt::Key_Space);
         }},
        {"screen reader", [&] { press(*button(banner(), "Sil")); }}};
    for (const auto& [name, remove] : ways) {
        unlockAgain();
        remove();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !banner().isVisible(); })) << name;
        EXPECT_TRUE(rescues.contents.empty()) << name;
        EXPECT_TRUE(isFocusInAList()) << name;
        EXPECT_EQ(firstTitle(), "Banka") << name;
        EXPECT_EQ(state->statusMessage(), "Saklanan değişiklikler silindi") << name;
        rename("Değişmiş");
        state->prepare(otherFile);
        state->prepare(vaultFile);
    }
}

TEST_F(RescueBannerTest, saysWhyItCouldNotBringBackAndStays) {
    unlockAgain();
    for (auto& [name, content] : rescues.contents)
        content = copyOf(bytesOf("bozuk"));
    goTo("Geri getir");
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(banner().isVisible());
    EXPECT_TRUE(heard().contains("Geri getirilemedi: ")) << qPrintable(heard());
    EXPECT_EQ(window.focusWidget(), button(banner(), "Geri getir"));
}

TEST_F(RescueBannerTest, goesWithTheLockAndComesBackWithTheNextUnlock) {
    unlockAgain();
    state->lock();
    EXPECT_FALSE(banner().isVisible());
    unlockAgain();
}

TEST_F(RescueBannerTest, showsAllOfItsTextsInTheSmallestWindow) {
    unlockAgain();
    for (const int width : {720, 1020, 3840}) {
        window.resize(width, 460);
        QCoreApplication::processEvents();
        const QRect whole = banner().rect();
        for (auto* const part : banner().findChildren<QWidget*>()) {
            if (!part->isVisible())
                continue;
            EXPECT_TRUE(whole.contains(QRect(part->mapTo(&banner(), QPoint()), part->size()))) << width;
            if (part->hasHeightForWidth()) {
                EXPECT_GE(part->height(), part->heightForWidth(part->width())) << width;
            }
        }
        EXPECT_LE(banner().height(), 460 / 3) << "the columns have most of the window";
    }
}

}  // namespace
