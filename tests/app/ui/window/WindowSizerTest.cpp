// SPDX-License-Identifier: MIT
#include "app/ui/window/WindowSizer.h"

#include <gtest/gtest.h>

#include <QMainWindow>
#include <QMenuBar>
#include <QScreen>
#include <QTest>

namespace {

class WindowSizerTest : public ::testing::Test {
protected:
    QMainWindow window;
    WindowSizer sizer{window};

    WindowSizerTest() { window.menuBar()->addMenu("Dosya"); }

    void show() {
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    void set(WindowSizer::Mode mode) {
        sizer.setMode(mode);
        QTest::qWait(1);  // it works one turn of the loop later
        QCoreApplication::processEvents();
    }
    int chrome() const { return window.menuBar()->sizeHint().height(); }
    QRect area() const { return window.screen()->availableGeometry(); }
};

TEST_F(WindowSizerTest, theCardIsAsHighAsItsContentAndCannotBeResized) {
    show();
    set(WindowSizer::Lock{400});
    EXPECT_EQ(window.size(), QSize(480, 400 + chrome()));
    EXPECT_EQ(window.minimumSize(), window.size());
    EXPECT_EQ(window.maximumSize(), window.size());
}

TEST_F(WindowSizerTest, theCardFollowsItsContent) {
    show();
    set(WindowSizer::Lock{400});
    set(WindowSizer::Lock{460});
    EXPECT_EQ(window.height(), 460 + chrome());
    set(WindowSizer::Lock{380});
    EXPECT_EQ(window.height(), 380 + chrome());
}

TEST_F(WindowSizerTest, aCardThatIsNotMeasuredYetChangesNothing) {
    show();
    set(WindowSizer::Lock{400});
    set(WindowSizer::Lock{0});
    EXPECT_EQ(window.size(), QSize(480, 400 + chrome()));
}

TEST_F(WindowSizerTest, aCardTallerThanTheScreenLeavesEightyPointsOfIt) {
    show();
    set(WindowSizer::Lock{5000});
    EXPECT_EQ(window.height(), area().height() - 80);
}

TEST_F(WindowSizerTest, onASmallScreenNeitherIsLargerThanIt) {
    const QRect small = QGuiApplication::screens().at(1)->availableGeometry();
    window.setScreen(QGuiApplication::screens().at(1));
    window.move(small.topLeft() + QPoint(20, 20));
    show();
    set(WindowSizer::Lock{700});
    EXPECT_TRUE(small.contains(window.frameGeometry()));
    set(WindowSizer::Main{});
    EXPECT_TRUE(small.contains(window.frameGeometry()));
    EXPECT_LE(window.minimumWidth(), small.width());
    EXPECT_LE(window.minimumHeight(), small.height());
    EXPECT_EQ(sizer.givenMainSize(), window.size());
}

TEST_F(WindowSizerTest, aRememberedSizeIsTheFirstOne) {
    show();
    set(WindowSizer::Lock{400});
    sizer.setMainSize({900, 600}, false);
    set(WindowSizer::Main{});
    EXPECT_EQ(window.size(), QSize(900, 600));

    set(WindowSizer::Lock{400});
    sizer.setMainSize({10, 10}, false);
    set(WindowSizer::Main{});
    EXPECT_EQ(window.size(), QSize(720, 460)) << "within the limits";
}

TEST_F(WindowSizerTest, theFirstFreeWindowHasTheUsualSize) {
    show();
    set(WindowSizer::Lock{400});
    set(WindowSizer::Main{});
    EXPECT_EQ(window.size(), QSize(1020, 680));
    EXPECT_EQ(window.minimumSize(), QSize(720, 460));
    EXPECT_EQ(window.maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

TEST_F(WindowSizerTest, aFreeWindowIsTheUsers) {
    show();
    set(WindowSizer::Main{});
    window.resize(800, 500);
    set(WindowSizer::Main{});
    EXPECT_EQ(window.size(), QSize(800, 500));
}

TEST_F(WindowSizerTest, theUsersSizeComesBackAfterTheCard) {
    show();
    set(WindowSizer::Main{});
    window.resize(730, 470);
    set(WindowSizer::Lock{400});
    set(WindowSizer::Lock{450});
    set(WindowSizer::Main{});
    EXPECT_EQ(window.size(), QSize(730, 470));
}

TEST_F(WindowSizerTest, theMiddleStaysWhereItIsOverManyTurns) {
    show();
    set(WindowSizer::Main{});
    window.resize(720, 460);
    window.move(40, 150);
    const auto place = window.frameGeometry();
    for (int turn = 0; turn < 5; ++turn) {
        set(WindowSizer::Lock{300});
        EXPECT_NEAR(window.frameGeometry().center().x(), place.center().x(), 1);
        EXPECT_NEAR(window.frameGeometry().center().y(), place.center().y(), 1);
        set(WindowSizer::Main{});
    }
    EXPECT_EQ(window.frameGeometry(), place);
}

TEST_F(WindowSizerTest, theWindowStaysInsideTheScreen) {
    show();
    set(WindowSizer::Lock{300});
    window.move(area().bottomRight() - QPoint(100, 100));
    set(WindowSizer::Lock{400});
    EXPECT_EQ(window.frameGeometry().right(), area().right());
    EXPECT_EQ(window.frameGeometry().bottom(), area().bottom());
    window.move(area().topLeft() - QPoint(300, 300));
    set(WindowSizer::Lock{300});
    EXPECT_EQ(window.frameGeometry().topLeft(), area().topLeft());
}

TEST_F(WindowSizerTest, aMaximisedWindowIsACardInBetweenAndMaximisedAgain) {
    show();
    set(WindowSizer::Main{});
    window.showMaximized();
    set(WindowSizer::Lock{300});
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.size() == QSize(480, 300 + chrome()); }));
    EXPECT_FALSE(window.isMaximized());
    set(WindowSizer::Main{});
    EXPECT_TRUE(window.isMaximized());
    window.showNormal();
    set(WindowSizer::Lock{300});
    set(WindowSizer::Main{});
    EXPECT_FALSE(window.isMaximized()) << "only once";
}

TEST_F(WindowSizerTest, aWindowThatDoesNotShowYetIsSizedAtOnce) {
    sizer.setMode(WindowSizer::Lock{400});
    EXPECT_EQ(window.size(), QSize(480, 400 + chrome()));
}

}  // namespace
