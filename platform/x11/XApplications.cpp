// SPDX-License-Identifier: MIT
#include "platform/x11/XApplications.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <ranges>
#include <utility>

namespace {

constexpr std::uint32_t askedByTheUser = 2;  // the source of a request; an application's own is refused more often

// What the kernel calls the process, which is at most 15 bytes of its file's name.
std::string processName(std::int64_t processIdentifier) {
    std::string name;
    std::getline(std::ifstream("/proc/" + std::to_string(processIdentifier) + "/comm"), name);
    return name;
}

std::optional<std::string> unlessEmpty(std::string text) {
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

}  // namespace

/// A process and the window of it that was in front. When that window closes, another one of the process replaces it.
class XApplications::Application final : public RunningApplication {
public:
    Application(XApplications& desktop, xcb_window_t window, std::int64_t processIdentifier)
        : m_desktop(desktop), m_window(window), m_processIdentifier(processIdentifier) {}

    [[nodiscard]] std::int64_t processIdentifier() const override { return m_processIdentifier; }

    [[nodiscard]] DesktopWindow window() const override {
        return {.processIdentifier = m_processIdentifier, .number = m_window};
    }

    [[nodiscard]] std::optional<std::string> localizedName() override {
        auto name = hasWindow() ? m_desktop.m_windows.className(m_window) : std::string();
        return unlessEmpty(name.empty() ? processName(m_processIdentifier) : std::move(name));
    }

    [[nodiscard]] std::optional<std::string> focusedWindowTitle() override {
        return hasWindow() ? unlessEmpty(m_desktop.m_windows.title(m_window)) : std::nullopt;
    }

    [[nodiscard]] bool isTerminated() override { return !hasWindow(); }

    void activate() override {
        if (hasWindow())
            m_desktop.activate(m_window);
    }

private:
    bool hasWindow() {
        const auto stacked = m_desktop.m_windows.stacked();
        if (isOurs(m_window) && (!stacked || std::ranges::count(*stacked, m_window) > 0))
            return true;
        for (const auto window : stacked.value_or(std::vector<xcb_window_t>()) | std::views::reverse)
            if (isOurs(window)) {
                m_window = window;
                return true;
            }
        return false;
    }

    // The server gives a window's number to another one as soon as it is free.
    [[nodiscard]] bool isOurs(xcb_window_t window) {
        return m_desktop.m_windows.exists(window) &&
               m_desktop.m_windows.processIdentifier(window) == m_processIdentifier;
    }

    XApplications& m_desktop;
    xcb_window_t m_window;
    std::int64_t m_processIdentifier;
};

XApplications::XApplications(XConnection& connection)
    : m_connection(connection), m_windows(connection), m_ownWindow(xcb_generate_id(connection.get())) {
    watch();
    QObject::connect(&m_connection, &XConnection::received, &m_listening, [this](const xcb_generic_event_t& event) {
        if (event.response_type == XCB_PROPERTY_NOTIFY)  // what a program sends has its upper bit set
            take(reinterpret_cast<const xcb_property_notify_event_t&>(event));
    });
}

XApplications::~XApplications() {
    xcb_destroy_window(m_connection.get(), m_ownWindow);
    xcb_flush(m_connection.get());
}

std::shared_ptr<RunningApplication> XApplications::frontmost() {
    const auto window = m_windows.active();
    if (!window || !m_windows.exists(*window))
        return nullptr;
    return std::make_shared<Application>(*this, *window, m_windows.processIdentifier(*window));
}

// As the server sees us: in a container it counts processes otherwise than we do.
std::int64_t XApplications::ownProcessIdentifier() {
    return m_windows.ownProcessIdentifier().value_or(::getpid());
}

void XApplications::observeActivation(std::function<void()> activated) {
    m_activated = std::move(activated);
}

void XApplications::watch() {
    const std::uint32_t propertyChanges = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection.get(), m_connection.root(), XCB_CW_EVENT_MASK, &propertyChanges);
    xcb_create_window(m_connection.get(), 0, m_ownWindow, m_connection.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &propertyChanges);
    xcb_flush(m_connection.get());
}

void XApplications::take(const xcb_property_notify_event_t& event) {
    if (event.window == m_ownWindow)
        m_serverTime = event.time;
    else if (event.window == m_connection.root() && event.atom == m_connection.atom("_NET_ACTIVE_WINDOW"))
        if (const auto observer = m_activated)  // a copy: it may remove itself
            observer();
}

void XApplications::activate(xcb_window_t window) {
    const auto now = serverTime();
    goToDesktopOf(window, now);
    ask(window, "_NET_ACTIVE_WINDOW", {askedByTheUser, now, XCB_WINDOW_NONE});
    xcb_flush(m_connection.get());
}

// Some managers bring the window over, others leave everything as it is.
void XApplications::goToDesktopOf(xcb_window_t window, xcb_timestamp_t now) {
    const auto desktop = m_windows.desktop(window);
    if (desktop && desktop != m_windows.currentDesktop())
        ask(m_connection.root(), "_NET_CURRENT_DESKTOP", {*desktop, now});
}

// Managers refuse what seems to have been asked before the user's last input. A change of a property bears the time.
xcb_timestamp_t XApplications::serverTime() {
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_APPEND, m_ownWindow, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0,
                        nullptr);
    m_connection.roundTrip();
    return m_serverTime;
}

void XApplications::ask(xcb_window_t window, std::string_view request, std::array<std::uint32_t, 5> data) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = m_connection.atom(request);
    std::ranges::copy(data, message.data.data32);
    xcb_send_event(m_connection.get(), 0, m_connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
}
