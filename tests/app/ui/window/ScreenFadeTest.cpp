// SPDX-License-Identifier: MIT
#include "app/ui/window/ScreenFade.h"

#include "app/ui/theme/Motion.h"
#include "app/ui/window/MainWindow.h"
#include "tests/app/ui/WindowProbe.h"
#include "tests/app/ui/WindowTest.h"

namespace {

using namespace WindowProbe;

class ScreenFadeTest : public WindowTest {
protected:
    MainWindow window{environment};

    ScreenFadeTest() { state->prepare(vaultFile); }
    ~ScreenFadeTest() override { Motion::setReduced(false); }

    void show() {
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    bool fades() const { return window.findChild<ScreenFade*>()->isVisible(); }
    bool comesToRest() {
        return QTest::qWaitFor([this] { return !fades(); });
    }
};

TEST_F(ScreenFadeTest, theFirstScreenIsThereAtOnce) {
    show();
    EXPECT_FALSE(fades());
}

TEST_F(ScreenFadeTest, eitherScreenGivesWayToTheOther) {
    show();
    state->unlock("parola", std::nullopt);
    EXPECT_TRUE(fades());
    EXPECT_TRUE(comesToRest());
    click(window, "Kasayı kilitle (⌘L)");
    EXPECT_TRUE(fades());
    EXPECT_TRUE(comesToRest());
    EXPECT_NE(field(window, "Ana parola"), nullptr);
}

TEST_F(ScreenFadeTest, aSessionThatEndsWithoutACommandFadesFromBareGround) {
    show();
    state->unlock("parola", std::nullopt);
    EXPECT_TRUE(comesToRest());
    state->lock();
    EXPECT_TRUE(fades());
    EXPECT_TRUE(comesToRest());
}

TEST_F(ScreenFadeTest, theFadeEndsAtTheNewScreenAlone) {
    show();
    state->unlock("parola", std::nullopt);
    const auto during = window.grab().toImage();
    EXPECT_TRUE(comesToRest());
    EXPECT_NE(window.grab().toImage(), during);
}

TEST_F(ScreenFadeTest, theNewScreenWorksWhileTheOldOneFades) {
    show();
    state->unlock("parola", std::nullopt);
    ASSERT_TRUE(fades());
    type(window, "Kayıtlarda ara", "forum");
    EXPECT_EQ(state->searchText(), "forum");
}

TEST_F(ScreenFadeTest, aWrongPasswordIsNoOtherScreen) {
    show();
    state->unlock("yanlış", std::nullopt);
    EXPECT_FALSE(fades());
}

TEST_F(ScreenFadeTest, nothingMovesWhereTheDesktopAsksForCalm) {
    Motion::setReduced(true);
    show();
    state->unlock("parola", std::nullopt);
    EXPECT_FALSE(fades());
    click(window, "Kasayı kilitle (⌘L)");
    EXPECT_FALSE(fades());
}

}  // namespace
