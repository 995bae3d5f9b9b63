// SPDX-License-Identifier: MIT
#include "platform/x11/XKeyboardEvents.h"

#include "platform/x11/DownKeys.h"
#include "platform/x11/XKeyEventSource.h"

#include <xcb/xtest.h>

XKeyboardEvents::XKeyboardEvents(Desktop desktop)
    : m_desktop(desktop), m_posted(desktop.connection), m_spareKeys(desktop.connection) {}

bool XKeyboardEvents::hasPermission() {
    if (!m_desktop.connection.isOpen())
        return false;
    const auto* extension = xcb_get_extension_data(m_desktop.connection.get(), &xcb_test_id);
    return extension && extension->present;
}

std::uint64_t XKeyboardEvents::heldModifiers() {
    std::uint64_t flags = 0;
    for (const auto keycode : heldModifierKeys())
        flags |= flagsOf(m_desktop.layout.modifiersOf(keycode));
    return flags;
}

bool XKeyboardEvents::isHotKeyHeld() {
    const auto keycode = m_desktop.hotKey.keycode;
    return keycode != 0 && DownKeys(m_desktop.connection.get()).contains(keycode);
}

// A grab by our own hot key ends with its key, and the keys that come after it reach their receiver.
void XKeyboardEvents::releaseHeldKeys() {
    for (const auto keycode : heldModifierKeys())
        m_posted.releaseForUser(keycode);
    if (isHotKeyHeld())
        m_posted.releaseForUser(m_desktop.hotKey.keycode);
    m_desktop.connection.roundTrip();
}

std::unique_ptr<KeyEventSource> XKeyboardEvents::makeSource(const DesktopWindow& window) {
    if (!hasPermission())
        return nullptr;
    m_desktop.connection.roundTrip();
    return std::make_unique<XKeyEventSource>(XKeyEventSource::Desktop{.connection = m_desktop.connection,
                                                                      .layout = m_desktop.layout,
                                                                      .posted = m_posted,
                                                                      .spareKeys = m_spareKeys},
                                             window);
}

// The keymap is asked and not the server's modifier map, in which AltGr is missing.
std::vector<xcb_keycode_t> XKeyboardEvents::heldModifierKeys() {
    std::vector<xcb_keycode_t> held;
    const DownKeys down(m_desktop.connection.get());
    for (unsigned code = 0; code <= 0xFF; ++code) {
        const auto keycode = static_cast<xcb_keycode_t>(code);
        if (down.contains(keycode) && !m_posted.isDown(keycode) && m_desktop.layout.modifiersOf(keycode) != 0)
            held.push_back(keycode);
    }
    return held;
}

// A modifier that is none of the others may be AltGr, and counts as it.
std::uint64_t XKeyboardEvents::flagsOf(unsigned modifiers) {
    const auto superKey = m_desktop.layout.modifierKey(KeyFlag::control);
    const unsigned super = superKey ? m_desktop.layout.modifiersOf(*superKey) : 0;
    std::uint64_t flags = 0;
    if ((modifiers & XCB_MOD_MASK_SHIFT) != 0)
        flags |= KeyFlag::shift;
    if ((modifiers & XCB_MOD_MASK_CONTROL) != 0)
        flags |= KeyFlag::command;
    if ((modifiers & super) != 0)
        flags |= KeyFlag::control;
    if ((modifiers & ~(XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | super)) != 0)
        flags |= KeyFlag::option;
    return flags;
}
