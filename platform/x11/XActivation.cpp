// SPDX-License-Identifier: MIT
#include "platform/x11/XActivation.h"

#include "platform/x11/XAnswer.h"
#include "platform/x11/XHandle.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string>

namespace {

// Who asks, in _NET_ACTIVE_WINDOW: the user, as through a pager. Some managers refuse what an application asks for
// itself in the half second after a click, which here is the very click on the file.
constexpr std::uint32_t fromUser = 2;
constexpr std::string_view timeMark = "_TIME";

/// A window of this connection alone, which is never shown.
class HiddenWindow {
public:
    explicit HiddenWindow(const XHandle& display) : m_display(display), m_window(xcb_generate_id(display.get())) {
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(m_display.get(), 0, m_window, m_display.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                          XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    }
    ~HiddenWindow() { xcb_destroy_window(m_display.get(), m_window); }
    HiddenWindow(const HiddenWindow&) = delete;
    HiddenWindow& operator=(const HiddenWindow&) = delete;

    [[nodiscard]] xcb_window_t get() const noexcept { return m_window; }

    /// The display's present time, which it says with each change of a property.
    [[nodiscard]] xcb_timestamp_t time() const {
        xcb_change_property(m_display.get(), XCB_PROP_MODE_APPEND, m_window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0,
                            nullptr);
        xcb_flush(m_display.get());
        while (const XAnswer<xcb_generic_event_t> event{xcb_wait_for_event(m_display.get())})
            if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY)
                return reinterpret_cast<const xcb_property_notify_event_t*>(event.get())->time;
        return XCB_CURRENT_TIME;
    }

private:
    const XHandle& m_display;
    xcb_window_t m_window;
};

void sendToRoot(const XHandle& display, const xcb_client_message_event_t& event, std::uint32_t mask) {
    xcb_send_event(display.get(), 0, display.root(), mask, reinterpret_cast<const char*>(&event));
}

void askManager(const XHandle& display, xcb_window_t window, xcb_timestamp_t time) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = display.atom("_NET_ACTIVE_WINDOW");
    event.data.data32[0] = fromUser;
    event.data.data32[1] = time;
    sendToRoot(display, event, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
}

/// Has the launcher take its busy pointer back. Its text goes in pieces of an event's size, a zero byte at its end.
void endStartup(const XHandle& display, const HiddenWindow& sender, std::string_view startupID) {
    std::string text = "remove: ID=";
    for (const char letter : startupID) {
        if (letter == ' ' || letter == '"' || letter == '\\')
            text += '\\';
        text += letter;
    }
    text += '\0';
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = sender.get();
    event.type = display.atom("_NET_STARTUP_INFO_BEGIN");
    for (std::size_t start = 0; start < text.size(); start += sizeof(event.data)) {
        std::memset(event.data.data8, 0, sizeof(event.data));
        std::memcpy(event.data.data8, text.data() + start, std::min(sizeof(event.data), text.size() - start));
        sendToRoot(display, event, XCB_EVENT_MASK_PROPERTY_CHANGE);
        event.type = display.atom("_NET_STARTUP_INFO");
    }
}

}  // namespace

void XActivation::activate(std::uint32_t window, std::string_view startupID) {
    const XHandle display;
    if (!display.isOpen())
        return;
    const HiddenWindow ours(display);
    const auto time = timeIn(startupID);
    askManager(display, window, time ? *time : ours.time());
    if (!startupID.empty())
        endStartup(display, ours, startupID);
    // What a client has sent is thrown away where it goes before the server has read it.
    const XAnswer<xcb_get_input_focus_reply_t> read(
        xcb_get_input_focus_reply(display.get(), xcb_get_input_focus(display.get()), nullptr));
}

std::optional<std::uint32_t> XActivation::timeIn(std::string_view startupID) {
    const auto mark = startupID.rfind(timeMark);
    if (mark == std::string_view::npos)
        return std::nullopt;
    const auto digits = startupID.substr(mark + timeMark.size());
    std::uint32_t time = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), time);
    return read.ec == std::errc() && time != 0 ? std::optional(time) : std::nullopt;
}
