// SPDX-License-Identifier: MIT
#include "platform/x11/XHotKeys.h"

#include "platform/x11/DownKeys.h"
#include "platform/x11/XAnswer.h"
#include "platform/x11/XKeycode.h"
#include "platform/x11/Xkb.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace {

constexpr int releasePollMilliseconds = 30;

// Otherwise a key that is held looks like one that is pressed again and again.
void distinguishRepeats(xcb_connection_t* connection) {
    constexpr auto flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const XAnswer<xcb_xkb_per_client_flags_reply_t> flags(xcb_xkb_per_client_flags_reply(
        connection, xcb_xkb_per_client_flags(connection, XCB_XKB_ID_USE_CORE_KBD, flag, flag, 0, 0, 0), nullptr));
}

// A client of the extension gets no MappingNotify.
void selectChangesOfKeyboard(xcb_connection_t* connection) {
    constexpr auto events = XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY;
    constexpr auto parts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts, parts, nullptr);
    xcb_flush(connection);
}

/// Whether the server speaks XKB with us; it must be asked before any other request of the extension.
bool usesKeyboardExtension(xcb_connection_t* connection) {
    const auto request = xcb_xkb_use_extension(connection, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    const XAnswer<xcb_xkb_use_extension_reply_t> extension(xcb_xkb_use_extension_reply(connection, request, nullptr));
    return extension && extension->supported;
}

/// The modifiers of a combination as bits of a key event's state; nothing where the keyboard lacks one of them.
std::optional<std::uint16_t> stateOf(std::uint32_t modifiers, const ModifierBits& bits) {
    const std::array rows{std::pair(hotKeyCommand, std::uint16_t{XCB_MOD_MASK_CONTROL}),
                          std::pair(hotKeyShift, std::uint16_t{XCB_MOD_MASK_SHIFT}), std::pair(hotKeyOption, bits.alt),
                          std::pair(hotKeyControl, bits.super)};
    std::uint16_t state = 0;
    for (const auto& [modifier, bit] : rows) {
        if ((modifiers & modifier) == 0)
            continue;
        if (bit == 0)
            return std::nullopt;
        state |= bit;
    }
    return state;
}

/// A grab is for one exact state, so there is one for each state of the locks.
std::array<std::uint16_t, 4> withLocks(std::uint16_t state, const ModifierBits& bits) {
    const auto with = [state](unsigned locks) { return static_cast<std::uint16_t>(state | locks); };
    return {state, with(XCB_MOD_MASK_LOCK), with(bits.numLock), with(XCB_MOD_MASK_LOCK | bits.numLock)};
}

}  // namespace

XHotKeys::XHotKeys(std::unique_ptr<XConnection> connection, HotKeyState& state)
    : m_connection(std::move(connection)), m_state(state), m_bits(ModifierBits::of(m_connection->get())) {
    useKeyboardExtension();
    m_untilReleased.setInterval(releasePollMilliseconds);
    QObject::connect(&m_untilReleased, &QTimer::timeout, &m_untilReleased, [this] {
        if (!isDown(m_heldKey))
            keyReleased(m_heldKey);
    });
    QObject::connect(m_connection.get(), &XConnection::received, &m_untilReleased,
                     [this](const xcb_generic_event_t& event) { take(event); });
}

void XHotKeys::useKeyboardExtension() {
    auto* const connection = m_connection->get();
    if (!usesKeyboardExtension(connection))
        return;
    m_keyboardEvent = xcb_get_extension_data(connection, &xcb_xkb_id)->first_event;
    distinguishRepeats(connection);
    selectChangesOfKeyboard(connection);
}

XHotKeys::~XHotKeys() {
    m_state.keycode = 0;
}

bool XHotKeys::installHandler(std::function<void(Identifier)> pressed) {
    m_pressed = std::move(pressed);
    return m_connection->isOpen();
}

void XHotKeys::removeHandler() {
    m_pressed = nullptr;
}

bool XHotKeys::registerHotKey(const HotKey& hotKey, Identifier identifier) {
    const auto keycode = XKeycode::of(hotKey.keyCode);
    if (!keycode || !m_connection->hasKey(*keycode))
        return false;
    const Combination combination{.identifier = identifier, .hotKey = hotKey, .keycode = *keycode};
    if (!grab(combination))
        return false;
    m_combinations.push_back(combination);
    publishKey();
    if (m_heldKey != combination.keycode && isDown(combination.keycode))
        waitForRelease(combination.keycode);
    return true;
}

void XHotKeys::unregisterHotKey(Identifier identifier) {
    const auto found = std::ranges::find(m_combinations, identifier, &Combination::identifier);
    if (found == m_combinations.end())
        return;
    ungrab(*found);
    m_combinations.erase(found);
    publishKey();
}

bool XHotKeys::isDown(xcb_keycode_t keycode) const {
    return DownKeys(m_connection->get()).contains(keycode);
}

bool XHotKeys::grab(const Combination& combination) {
    const auto state = stateOf(combination.hotKey.modifiers, m_bits);
    if (!state)
        return false;
    std::vector<xcb_void_cookie_t> requests;
    for (const auto locked : withLocks(*state, m_bits))
        requests.push_back(xcb_grab_key_checked(m_connection->get(), 0, m_connection->root(), locked,
                                                combination.keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    bool isGranted = true;
    for (const auto request : requests)
        if (const XAnswer<xcb_generic_error_t> refusal{xcb_request_check(m_connection->get(), request)})
            isGranted = false;
    if (!isGranted)
        ungrab(combination);
    return isGranted && m_connection->isOpen();
}

void XHotKeys::ungrab(const Combination& combination) {
    const auto state = stateOf(combination.hotKey.modifiers, m_bits);
    if (!state)
        return;
    for (const auto locked : withLocks(*state, m_bits))
        xcb_ungrab_key(m_connection->get(), combination.keycode, m_connection->root(), locked);
    xcb_flush(m_connection->get());
}

void XHotKeys::grabAnew() {
    const auto bits = ModifierBits::of(m_connection->get());
    if (bits == m_bits)
        return;
    for (const auto& combination : m_combinations)
        ungrab(combination);
    m_bits = bits;
    for (const auto& combination : m_combinations)
        // A combination that is refused stays silent until the modifiers change again.
        [[maybe_unused]] const bool isGranted = grab(combination);
}

void XHotKeys::take(const xcb_generic_event_t& event) {
    // What a program sends has the upper bit set, and presses nothing.
    if (event.response_type == XCB_KEY_PRESS)
        keyPressed(reinterpret_cast<const xcb_key_press_event_t&>(event));
    else if (event.response_type == XCB_KEY_RELEASE)
        keyReleased(reinterpret_cast<const xcb_key_release_event_t&>(event).detail);
    else if (event.response_type == m_keyboardEvent)  // of the two kinds that were selected
        grabAnew();
}

void XHotKeys::keyPressed(const xcb_key_press_event_t& event) {
    if (event.detail == m_heldKey)
        return;
    constexpr unsigned allModifiers = 0xFF;
    const unsigned locks = XCB_MOD_MASK_LOCK | m_bits.numLock;
    const unsigned state = event.state & allModifiers & ~locks;
    const auto pressed = std::ranges::find_if(m_combinations, [&](const Combination& combination) {
        return combination.keycode == event.detail && stateOf(combination.hotKey.modifiers, m_bits) == state;
    });
    if (pressed == m_combinations.end())
        return;
    m_heldKey = event.detail;
    if (const auto handler = m_pressed)  // a copy: it may remove itself
        handler(pressed->identifier);
}

void XHotKeys::keyReleased(xcb_keycode_t keycode) {
    if (keycode != m_heldKey)
        return;
    m_heldKey = 0;
    m_untilReleased.stop();
}

// It was pressed before the combination was ours, and its repeats are not presses of it.
void XHotKeys::waitForRelease(xcb_keycode_t keycode) {
    m_heldKey = keycode;
    m_untilReleased.start();
}

void XHotKeys::publishKey() {
    m_state.keycode = m_combinations.empty() ? xcb_keycode_t{0} : m_combinations.back().keycode;
}
