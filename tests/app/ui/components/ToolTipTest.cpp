// SPDX-License-Identifier: MIT
#include "app/ui/components/ToolTip.h"

#include "app/ui/components/ApplicationStyle.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/theme/Theme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace {

class ToolTipTest : public ::testing::Test {
protected:
    QWidget window;
    QPushButton button{&window};

    ToolTipTest() {
        window.resize(400, 300);
        button.setGeometry(40, 40, 100, 30);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    ~ToolTipTest() override { ToolTip::hideNow(); }

    void rest(QWidget& over) {
        const QPoint middle = over.rect().center();
        QHelpEvent event(QEvent::ToolTip, middle, over.mapToGlobal(middle));
        QApplication::sendEvent(&over, &event);
    }
    /// The panel that shows; none where there is none.
    static ToolTip* shown() {
        for (auto* const widget : QApplication::topLevelWidgets())
            if (auto* const tip = qobject_cast<ToolTip*>(widget); tip && tip->isVisible())
                return tip;
        return nullptr;
    }
};

TEST_F(ToolTipTest, aControlsTextIsShownAsItIsBesideIt) {
    const auto text = QStringLiteral("<b>a</b> &amp; b");
    button.setToolTip(text);
    rest(button);
    ASSERT_NE(shown(), nullptr);
    EXPECT_EQ(shown()->accessibleName(), text);
    EXPECT_FALSE(shown()->geometry().intersects(QRect(button.mapToGlobal(QPoint()), button.size())));
}

TEST_F(ToolTipTest, markupIsAsWideAsItsLetters) {
    ToolTip::show(QStringLiteral("aaaaaaaaaaaa"), button, button.rect());
    const int plain = shown()->width();
    ToolTip::show(QStringLiteral("aaaaaaaaaaaa<b></b>"), button, button.rect());
    EXPECT_GT(shown()->width(), plain + 10) << "the letters of the marks show";
}

TEST_F(ToolTipTest, aLongTextIsBrokenAndAnEndlessOneCut) {
    ToolTip::show(QString(300, u'm'), button, button.rect());
    EXPECT_LT(shown()->width(), 400);
    const int height = shown()->height();
    ToolTip::show(QString(100'000'000, u'm'), button, button.rect());
    EXPECT_GT(shown()->height(), height);
    EXPECT_LT(shown()->height(), 20 * height);
}

TEST_F(ToolTipTest, itGoesWithTheNextKeyOrClickOrWhenThePointerLeaves) {
    button.setToolTip(QStringLiteral("Kilitle"));
    const std::function<void()> endings[] = {[&] { QTest::keyClick(&button, Qt::Key_A); },
                                             [&] { QTest::mousePress(&button, Qt::LeftButton); },
                                             [&] {
                                                 QEvent leave(QEvent::Leave);
                                                 QApplication::sendEvent(&button, &leave);
                                             }};
    for (const auto& end : endings) {
        rest(button);
        ASSERT_NE(shown(), nullptr);
        end();
        EXPECT_EQ(shown(), nullptr);
    }
}

TEST_F(ToolTipTest, theNamesOfTheKeysStandBehindTheirSignsAndAreHeardInTheirPlace) {
    IconButton lock(QStringLiteral("lock"), QStringLiteral("Kasayı kilitle (⌘L)"), &window);
    lock.show();
    rest(lock);
    ASSERT_NE(shown(), nullptr);
    EXPECT_EQ(shown()->accessibleName(), QStringLiteral("Kasayı kilitle (Ctrl+L)"));
    const int withNames = shown()->width();
    ToolTip::show(QStringLiteral("Kasayı kilitle (⌘L)"), button, button.rect());
    EXPECT_EQ(withNames, shown()->width() + QFontMetrics(BrandFont::secondary()).horizontalAdvance("  Ctrl+L"));
}

TEST_F(ToolTipTest, theNamesOfTheKeysAreInSoftInk) {
    IconButton lock(QStringLiteral("lock"), QStringLiteral("⌘L"), &window);
    lock.show();
    rest(lock);
    ASSERT_NE(shown(), nullptr);
    const auto picture = shown()->grab().toImage();
    const auto brightest = [&](int from, int to) {
        int most = 0;
        for (int x = from; x < to; ++x)
            for (int y = 3; y < picture.height() - 3; ++y)
                most = std::max(most, qGray(picture.pixel(x, y)));
        return most;
    };
    EXPECT_GT(brightest(4, 24), qGray(Palette::textSoft.rgb()) + 20);
    EXPECT_LE(brightest(30, picture.width() - 4), qGray(Palette::textSoft.rgb()) + 8);
}

TEST_F(ToolTipTest, signsInATextOfTheVaultStayAsTheyAre) {
    const auto text = QStringLiteral("Kopyala ⌘C, yapıştır ⌘V");
    button.setToolTip(text);
    rest(button);
    ASSERT_NE(shown(), nullptr);
    EXPECT_EQ(shown()->accessibleName(), text);
}

TEST_F(ToolTipTest, aControlWithoutTextHasNone) {
    rest(button);
    EXPECT_EQ(shown(), nullptr);
}

}  // namespace
