// SPDX-License-Identifier: MIT
#pragma once

#include "tests/desktop/x11/Hands.h"

#include <QProcess>

#include <string_view>
#include <vector>

/// Another program, with windows that have no property before a test gives them one.
class WindowProgram {
public:
    WindowProgram();
    WindowProgram(const WindowProgram&) = delete;
    WindowProgram& operator=(const WindowProgram&) = delete;
    ~WindowProgram() { end(); }

    [[nodiscard]] qint64 processIdentifier() const { return m_process.processId(); }

    [[nodiscard]] xcb_window_t createWindow() { return perform("create"); }
    void map(xcb_window_t window) { perform("map " + QByteArray::number(window)); }
    void destroy(xcb_window_t window) { perform("destroy " + QByteArray::number(window)); }
    void end();

private:
    xcb_window_t perform(const QByteArray& command);

    QProcess m_process;
};

/// What anybody may do to a window.
class Window {
public:
    Window(Hands& hands, xcb_window_t window) : m_hands(hands), m_window(window) {}

    [[nodiscard]] xcb_window_t number() const { return m_window; }

    void setText(std::string_view property, std::string_view type, std::string_view value);
    void setNumbers(std::string_view property, std::string_view type, const std::vector<std::uint32_t>& values);

    /// Has the window manager do something to it.
    void ask(std::string_view request, const std::vector<std::uint32_t>& values);

    /// The first of the numbers in a property; 0 where there is none.
    [[nodiscard]] std::uint32_t readNumber(std::string_view property);

private:
    [[nodiscard]] xcb_atom_t atom(std::string_view name);

    Hands& m_hands;
    xcb_window_t m_window;
};

/// A window manager of the display of the environment.
class WindowManager {
public:
    static constexpr std::uint32_t desktops = 2;

    WindowManager(Hands& hands, const QString& program);
    WindowManager(const WindowManager&) = delete;
    WindowManager& operator=(const WindowManager&) = delete;
    ~WindowManager();

    /// Whether it has begun its work, with so many desktops.
    [[nodiscard]] bool isRunning() const { return m_isRunning; }

private:
    QProcess m_process;
    bool m_isRunning = false;
};
