// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/Applications.h"
#include "platform/x11/XConnection.h"
#include "platform/x11/XWindows.h"

#include <QObject>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

/// The applications by their windows, as the window manager lists them. Titles can be read whenever the display can.
class XApplications final : public Applications {
public:
    /// The connection outlives it, and it outlives the applications that it gives out.
    explicit XApplications(XConnection& connection);
    ~XApplications() override;
    XApplications(const XApplications&) = delete;
    XApplications& operator=(const XApplications&) = delete;

    [[nodiscard]] std::shared_ptr<RunningApplication> frontmost() override;
    [[nodiscard]] std::int64_t ownProcessIdentifier() override;
    void observeActivation(std::function<void()> activated) override;

private:
    class Application;

    void watch();
    void take(const xcb_property_notify_event_t& event);
    void activate(xcb_window_t window);
    void goToDesktopOf(xcb_window_t window, xcb_timestamp_t now);
    [[nodiscard]] xcb_timestamp_t serverTime();
    void ask(xcb_window_t window, std::string_view request, std::array<std::uint32_t, 5> data);

    XConnection& m_connection;
    XWindows m_windows;
    xcb_window_t m_ownWindow;  // never shown
    xcb_timestamp_t m_serverTime = XCB_CURRENT_TIME;
    std::function<void()> m_activated;
    QObject m_listening;
};
