// SPDX-License-Identifier: MIT
#include "platform/x11/XApplications.h"

#include "tests/desktop/x11/Hands.h"
#include "tests/desktop/x11/Window.h"
#include "tests/desktop/x11/X11Test.h"

#include <unistd.h>

#include <memory>
#include <optional>
#include <string>

using namespace std::string_literals;

namespace {

/// Under each window manager.
class XApplicationsTest : public X11Test, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override { ASSERT_TRUE(display.isRunning() && manager.isRunning()); }

    /// A window of a program, shown and in front.
    Window show(WindowProgram& owner, const std::string& title = "") {
        Window window(hands, owner.createWindow());
        if (!title.empty())
            window.setText("_NET_WM_NAME", "UTF8_STRING", title);
        owner.map(window.number());
        EXPECT_TRUE(comesTrue([&] { return window.readNumber("WM_STATE") != 0; }));
        bringToFront(window);
        return window;
    }

    // As a taskbar does it.
    void bringToFront(Window& window) {
        window.ask("_NET_ACTIVE_WINDOW", {2, 0, 0});
        EXPECT_TRUE(isInFront(window));
    }

    bool isInFront(const Window& window) {
        Window root(hands, hands.root());
        return comesTrue([&] { return root.readNumber("_NET_ACTIVE_WINDOW") == window.number(); });
    }

    Hands hands;
    WindowManager manager{hands, GetParam()};
    std::unique_ptr<XConnection> connection = XConnection::connected();
    XApplications applications{*connection};
    WindowProgram editor;
    WindowProgram browser;
};

INSTANTIATE_TEST_SUITE_P(Under, XApplicationsTest, testing::Values("openbox", "xfwm4"),
                         [](const auto& manager) { return std::string(manager.param); });

TEST_P(XApplicationsTest, withoutAWindowNothingIsInFront) {
    EXPECT_EQ(applications.frontmost(), nullptr);
}

TEST_P(XApplicationsTest, theFrontWindowsProcessIsKnownThoughTheWindowIsSilentAboutIt) {
    show(editor);

    const auto front = applications.frontmost();

    ASSERT_NE(front, nullptr);
    EXPECT_EQ(front->processIdentifier(), editor.processIdentifier());
    EXPECT_NE(front->processIdentifier(), applications.ownProcessIdentifier());
}

TEST_P(XApplicationsTest, theServerIsBelievedAndNotTheWindow) {
    auto window = show(editor);
    window.setNumbers("_NET_WM_PID", "CARDINAL", {1});

    EXPECT_EQ(applications.frontmost()->processIdentifier(), editor.processIdentifier());
}

TEST_P(XApplicationsTest, ourOwnWindowIsOfOurProcess) {
    const Hands ownWindows;
    const auto window = xcb_generate_id(ownWindows.connection());
    xcb_create_window(ownWindows.connection(), XCB_COPY_FROM_PARENT, window, ownWindows.root(), 0, 0, 200, 200, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(ownWindows.connection(), window);
    xcb_flush(ownWindows.connection());
    Window own(hands, window);
    ASSERT_TRUE(comesTrue([&] { return own.readNumber("WM_STATE") != 0; }));
    bringToFront(own);

    EXPECT_EQ(applications.frontmost()->processIdentifier(), applications.ownProcessIdentifier());
    EXPECT_EQ(applications.ownProcessIdentifier(), ::getpid());
}

TEST_P(XApplicationsTest, theTitleIsThatOfNowInEachEncoding) {
    auto window = show(editor);
    const auto front = applications.frontmost();
    const auto title = [&] { return front->focusedWindowTitle(); };
    EXPECT_EQ(title(), std::nullopt);

    window.setText("WM_NAME", "STRING", "\xDCnl\xFC");
    EXPECT_EQ(title(), "Ünlü");
    window.setText("WM_NAME", "UTF8_STRING", "İlk ğ");
    EXPECT_EQ(title(), "İlk ğ");
    // Latin-5 from the upper half, then UTF-8, then ASCII again (ISO 2022, as compound texts have it).
    window.setText("WM_NAME", "COMPOUND_TEXT", "\x1B\x2D\x4D\xDCnl\xFC \xF0 \x1B%G\xE2\x80\x94\x1B%@ pencere");
    EXPECT_EQ(title(), "Ünlü ğ — pencere");
    window.setText("_NET_WM_NAME", "UTF8_STRING", "Banka 🏦 — Giriş");
    EXPECT_EQ(title(), "Banka 🏦 — Giriş");
    window.setText("_NET_WM_NAME", "UTF8_STRING", "");
    EXPECT_EQ(title(), "Ünlü ğ — pencere");
}

TEST_P(XApplicationsTest, aTitleThatIsNotTextIsMadeText) {
    auto window = show(editor);
    const auto front = applications.frontmost();

    window.setText("_NET_WM_NAME", "UTF8_STRING", "a\xFF\xFE b");
    EXPECT_EQ(front->focusedWindowTitle(), "a\uFFFD\uFFFD b");
    window.setText("_NET_WM_NAME", "UTF8_STRING", "önce\0sonra"s);
    EXPECT_EQ(front->focusedWindowTitle(), "önce");
    window.setText("_NET_WM_NAME", "UTF8_STRING", std::string(1'000'000, 'x'));
    EXPECT_EQ(front->focusedWindowTitle(), std::string(65536, 'x'));
    window.setNumbers("_NET_WM_NAME", "UTF8_STRING", {1, 2, 3});
    EXPECT_EQ(front->focusedWindowTitle(), std::nullopt);
    window.setText("WM_NAME", "COMPOUND_TEXT", "\x1B\x1B\xFF\x1B%/");
    EXPECT_NO_THROW(static_cast<void>(front->focusedWindowTitle()));
    window.setText("WM_NAME", "ATOM", "abc");
    EXPECT_EQ(front->focusedWindowTitle(), std::nullopt);
}

TEST_P(XApplicationsTest, theNameIsTheClassElseThatOfTheProcess) {
    auto window = show(editor);
    const auto front = applications.frontmost();
    EXPECT_EQ(front->localizedName(), "window-program");

    window.setText("WM_CLASS", "STRING", "notlar\0Notlar\0"s);
    EXPECT_EQ(front->localizedName(), "Notlar");
    window.setText("WM_CLASS", "STRING", "notlar");
    EXPECT_EQ(front->localizedName(), "window-program");
    window.setText("WM_CLASS", "STRING", "notlar\0"s);
    EXPECT_EQ(front->localizedName(), "window-program");
}

TEST_P(XApplicationsTest, everyChangeOfTheFrontIsReportedAlsoWithinOneProgram) {
    auto first = show(editor, "Bir");
    auto second = show(editor, "İki");
    auto other = show(browser, "Gezgin");
    passTime(50);
    std::vector<std::optional<std::string>> titles;
    applications.observeActivation([&] {
        if (const auto front = applications.frontmost())
            if (auto title = front->focusedWindowTitle(); titles.empty() || titles.back() != title)
                titles.push_back(std::move(title));
    });

    for (auto* window : {&first, &second, &other}) {
        bringToFront(*window);
        ASSERT_TRUE(comesTrue([&] { return applications.frontmost() != nullptr; }));
        passTime(50);
    }
    EXPECT_EQ(titles, (std::vector<std::optional<std::string>>{"Bir", "İki", "Gezgin"}));

    applications.observeActivation({});
    bringToFront(first);
    passTime(50);
    EXPECT_EQ(titles.size(), 3);
}

TEST_P(XApplicationsTest, anApplicationStandsForItsWindowThroughAllChangesOfTheFront) {
    const auto first = show(editor, "Bir");
    const auto target = applications.frontmost();
    show(editor, "İki");
    show(browser, "Gezgin");

    EXPECT_EQ(target->focusedWindowTitle(), "Bir");
    target->activate();

    EXPECT_TRUE(isInFront(first));
}

TEST_P(XApplicationsTest, aMinimisedWindowIsBroughtBack) {
    auto window = show(editor);
    const auto target = applications.frontmost();
    show(browser);
    constexpr std::uint32_t iconic = 3;
    window.ask("WM_CHANGE_STATE", {iconic});
    ASSERT_TRUE(comesTrue([&] { return window.readNumber("WM_STATE") == iconic; }));

    EXPECT_FALSE(target->isTerminated());
    target->activate();

    EXPECT_TRUE(isInFront(window));
    EXPECT_EQ(window.readNumber("WM_STATE"), 1);
}

TEST_P(XApplicationsTest, aWindowOnAnotherDesktopIsReached) {
    Window root(hands, hands.root());
    auto window = show(editor);
    const auto target = applications.frontmost();
    window.ask("_NET_WM_DESKTOP", {1, 2});
    ASSERT_TRUE(comesTrue([&] { return window.readNumber("_NET_WM_DESKTOP") == 1; }));
    show(browser);
    ASSERT_EQ(root.readNumber("_NET_CURRENT_DESKTOP"), 0);

    target->activate();

    EXPECT_TRUE(isInFront(window));
}

TEST_P(XApplicationsTest, aWindowThatTakesNoFocusAnyMoreStaysBehindWithoutHarm) {
    auto window = show(editor);
    const auto target = applications.frontmost();
    show(browser);
    constexpr std::uint32_t inputHint = 1;
    window.setNumbers("WM_HINTS", "WM_HINTS", {inputHint, 0, 0, 0, 0, 0, 0, 0, 0});
    passTime(50);

    target->activate();
    passTime(300);

    ASSERT_NE(applications.frontmost(), nullptr);
    EXPECT_EQ(applications.frontmost()->processIdentifier(), browser.processIdentifier());
    EXPECT_FALSE(target->isTerminated());
}

TEST_P(XApplicationsTest, anotherWindowOfTheProgramStandsInForOneThatWasClosed) {
    const auto closed = show(editor, "Kapanan");
    const auto target = applications.frontmost();
    show(editor, "Alttaki");
    const auto top = show(editor, "Üstteki");
    show(browser, "Gezgin");

    editor.destroy(closed.number());

    ASSERT_TRUE(comesTrue([&] { return target->focusedWindowTitle() == "Üstteki"; }));
    EXPECT_FALSE(target->isTerminated());
    EXPECT_EQ(target->processIdentifier(), editor.processIdentifier());
    target->activate();
    EXPECT_TRUE(isInFront(top));
}

TEST_P(XApplicationsTest, anApplicationWithoutAnyWindowIsTerminated) {
    const auto window = show(editor, "Tek");
    const auto target = applications.frontmost();
    const auto other = show(browser, "Gezgin");
    EXPECT_FALSE(target->isTerminated());

    editor.destroy(window.number());

    EXPECT_TRUE(comesTrue([&] { return target->isTerminated(); }));
    EXPECT_EQ(target->focusedWindowTitle(), std::nullopt);
    EXPECT_EQ(target->localizedName(), "window-program");
    target->activate();
    passTime(50);
    EXPECT_TRUE(isInFront(other));
}

TEST_P(XApplicationsTest, anApplicationThatHasQuitIsTerminatedAlsoWhenItsNumbersGoToAnother) {
    show(editor, "Eski");
    const auto target = applications.frontmost();
    editor.end();
    ASSERT_TRUE(comesTrue([&] { return target->isTerminated(); }));

    // The server gives the numbers that have become free to the next client.
    WindowProgram next;
    show(next, "Yeni");

    EXPECT_TRUE(target->isTerminated());
    EXPECT_EQ(target->focusedWindowTitle(), std::nullopt);
}

TEST_P(XApplicationsTest, aBrokenConnectionIsHarmless) {
    show(editor, "Banka");
    const auto target = applications.frontmost();

    display.stop();
    passTime(50);

    EXPECT_EQ(applications.frontmost(), nullptr);
    EXPECT_TRUE(target->isTerminated());
    EXPECT_EQ(target->focusedWindowTitle(), std::nullopt);
    target->activate();
    EXPECT_EQ(applications.ownProcessIdentifier(), ::getpid());
}

class XApplicationsAloneTest : public X11Test {};

TEST_F(XApplicationsAloneTest, withoutAWindowManagerNothingIsInFront) {
    const auto connection = XConnection::connected();
    XApplications applications(*connection);
    WindowProgram editor;
    editor.map(editor.createWindow());

    EXPECT_EQ(applications.frontmost(), nullptr);
    EXPECT_EQ(applications.ownProcessIdentifier(), ::getpid());
}

}  // namespace
