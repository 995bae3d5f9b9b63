// SPDX-License-Identifier: MIT
#include "platform/x11/XKeyboardLayout.h"

#include "platform/x11/XKeycode.h"
#include "platform/x11/Xkb.h"

#include <xkbcommon/xkbcommon-x11.h>

#include <utility>

namespace {

constexpr std::uint16_t groupParts = XCB_XKB_STATE_PART_GROUP_STATE | XCB_XKB_STATE_PART_GROUP_BASE |
                                     XCB_XKB_STATE_PART_GROUP_LATCH | XCB_XKB_STATE_PART_GROUP_LOCK;

/// What all of XKB's events begin with.
struct XkbEvent {
    std::uint8_t responseType;
    std::uint8_t xkbType;
    std::uint16_t sequence;
    xcb_timestamp_t time;
    std::uint8_t deviceID;
};

template <class Event>
const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

// Keys without a key code are lent to characters all the time, and are no part of a layout.
bool touchesOurKeys(const xcb_xkb_map_notify_event_t& change) {
    constexpr unsigned partsByKey = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_KEY_ACTIONS;
    if ((change.changed & ~partsByKey) != 0)
        return true;
    for (const auto& [first, count] : {std::pair<unsigned, unsigned>(change.firstKeySym, change.nKeySyms),
                                       std::pair<unsigned, unsigned>(change.firstKeyAct, change.nKeyActs)})
        for (unsigned keycode = first; keycode < first + count; ++keycode)
            if (XKeycode::hasKeyCode(keycode))
                return true;
    return false;
}

}  // namespace

XKeyboardLayout::XKeyboardLayout(XConnection& connection) : m_connection(connection) {
    if (!xkb_x11_setup_xkb_extension(m_connection.get(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                     XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &m_eventType, nullptr))
        return;
    m_device = xkb_x11_get_core_keyboard_device_id(m_connection.get());
    QObject::connect(&m_connection, &XConnection::received, &m_listener,
                     [this](const xcb_generic_event_t& event) { take(event); });
    selectEvents();
}

bool XKeyboardLayout::isAvailable() {
    return keymap() != nullptr;
}

std::string XKeyboardLayout::translate(std::uint16_t keyCode, Modifiers modifiers) {
    const auto keycode = XKeycode::of(keyCode);
    const auto* const map = keymap();
    return keycode && map ? map->text(*keycode, modifiers) : std::string();
}

void XKeyboardLayout::observe(std::function<void()> changed) {
    m_changed = std::move(changed);
}

std::optional<xcb_keycode_t> XKeyboardLayout::modifierKey(std::uint64_t flag) {
    const auto* const map = keymap();
    return map ? map->modifierKey(flag) : std::nullopt;
}

unsigned XKeyboardLayout::modifiersOf(xcb_keycode_t keycode) {
    const auto* const map = keymap();
    return map ? map->modifiersOf(keycode) : 0;
}

void XKeyboardLayout::selectEvents() {
    constexpr std::uint16_t allNews = XCB_XKB_NKN_DETAIL_KEYCODES | XCB_XKB_NKN_DETAIL_DEVICE_ID;
    constexpr std::uint16_t mapParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                       XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_KEY_ACTIONS;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = allNews;
    details.newKeyboardDetails = allNews;
    details.affectState = groupParts;
    details.stateDetails = groupParts;
    xcb_xkb_select_events_aux(
        m_connection.get(), static_cast<xcb_xkb_device_spec_t>(m_device),
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0,
        mapParts, mapParts, &details);
    m_connection.roundTrip();
}

// The keymap is loaded when it is needed: one change comes as several events, and loading waits for answers.
void XKeyboardLayout::take(const xcb_generic_event_t& event) {
    if (!isChange(event))
        return;
    m_keymap.reset();
    if (m_changed)
        m_changed();
}

bool XKeyboardLayout::isChange(const xcb_generic_event_t& event) const {
    if ((event.response_type & 0x7F) != m_eventType || as<XkbEvent>(event).deviceID != m_device)
        return false;
    switch (as<XkbEvent>(event).xkbType) {
        case XCB_XKB_NEW_KEYBOARD_NOTIFY:
            return true;
        case XCB_XKB_STATE_NOTIFY:
            return (as<xcb_xkb_state_notify_event_t>(event).changed & groupParts) != 0;
        case XCB_XKB_MAP_NOTIFY:
            return touchesOurKeys(as<xcb_xkb_map_notify_event_t>(event));
        default:
            return false;
    }
}

const XKeymap* XKeyboardLayout::keymap() {
    if (!m_connection.isOpen())
        return nullptr;
    if (!m_keymap && m_device >= 0)
        m_keymap = XKeymap::ofDevice(m_connection.get(), m_device);
    return m_keymap.get();
}
