// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/HotKeyState.h"
#include "platform/x11/XConnection.h"
#include "platform/x11/XKeyboardEvents.h"
#include "platform/x11/XKeyboardLayout.h"
#include "tests/desktop/VirtualDisplay.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <unistd.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// A program that has the keyboard's focus, and the events that X sends it.
class FocusedProgram {
public:
    /// The poster outlives the program.
    explicit FocusedProgram(XConnection& poster);

    /// The strokes since the last asking, all that were posted before: "+38" for the press of a keycode, "-38" for
    /// its release, each with the state that a press comes with, as in "+38/1".
    [[nodiscard]] std::vector<std::string> strokes();

    [[nodiscard]] xcb_connection_t* connection() const { return m_connection->get(); }

    /// Its window, as the desktop knows it.
    [[nodiscard]] DesktopWindow window() const { return {.processIdentifier = ::getpid(), .number = m_window}; }

    /// Another window within the program's own takes the focus, as many programs have it.
    void focusWithin();

private:
    XConnection& m_poster;
    std::unique_ptr<XConnection> m_connection = XConnection::connected();
    xcb_window_t m_window;
};

/// The user's hands on the keyboard of the display, which is another one than that on which programs post.
class Hands {
public:
    Hands();
    ~Hands();
    void press(xcb_keycode_t keycode);
    void release(xcb_keycode_t keycode);
    void strike(xcb_keycode_t keycode) {
        press(keycode);
        release(keycode);
    }

private:
    void post(int event, xcb_keycode_t keycode);

    std::unique_ptr<XConnection> m_connection = XConnection::connected();
    std::uint8_t m_firstEvent = 0;  // of the extension that knows of more than one keyboard
    std::uint8_t m_device = 0;
};

/// An X server of its own, with our keyboard on it.
class KeyboardTest : public testing::Test {
protected:
    explicit KeyboardTest(const QStringList& options = {});
    void SetUp() override;

    /// Has the user select a layout, in place of the one before.
    void select(const QStringList& layout);
    void runOnDisplay(const QString& program, const QStringList& arguments) const;

    /// Sets a group or locks as their keys would.
    void selectGroup(std::uint8_t group);
    void lock(std::uint8_t modifiers);
    [[nodiscard]] std::uint8_t lockedModifiers() const;
    [[nodiscard]] std::uint8_t latchedModifiers() const;

    /// The symbols of a key, without the empty ones at their end.
    [[nodiscard]] std::vector<xcb_keysym_t> symbols(xcb_keycode_t keycode) const;
    [[nodiscard]] bool isDown(xcb_keycode_t keycode) const;

    static bool waitUntil(const std::function<bool()>& condition);
    static void passTime(int milliseconds);

    int argumentCount = 1;
    char name[8] = "brenvik";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{argumentCount, arguments};
    VirtualDisplay display;
    std::unique_ptr<XConnection> other;  // of the test itself
    std::unique_ptr<XConnection> connection;
    HotKeyState hotKey;
    std::optional<XKeyboardLayout> layout;
    std::optional<XKeyboardEvents> keyboard;
};
