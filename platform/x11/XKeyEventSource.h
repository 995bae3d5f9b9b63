// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/KeyboardEvents.h"
#include "platform/x11/HeldModifiers.h"
#include "platform/x11/LocksOff.h"
#include "platform/x11/PostedKeys.h"
#include "platform/x11/SpareKeys.h"
#include "platform/x11/XConnection.h"
#include "platform/x11/XKeyboardLayout.h"
#include "platform/x11/XTypedWindow.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <string_view>

/// The strokes of one run. X's events have no flags of their own: their receiver sees the keys that are down. So the
/// modifiers of an event are held around it, as far as they are not held anyway.
class XKeyEventSource final : public KeyEventSource {
public:
    /// The desktop; all of it outlives the source.
    struct Desktop {
        XConnection& connection;
        XKeyboardLayout& layout;
        PostedKeys& posted;
        SpareKeys& spareKeys;
    };

    XKeyEventSource(Desktop desktop, const DesktopWindow& window);
    ~XKeyEventSource() override;

    void expect(std::string_view characters) override;
    [[nodiscard]] Posted post(std::span<const KeyEvent> events) override;
    [[nodiscard]] bool follow() override { return m_window.follow(); }

private:
    [[nodiscard]] bool canPost(const KeyEvent& event);
    [[nodiscard]] bool canStrike(std::string_view text);

    [[nodiscard]] Posted postKeys(std::span<const KeyEvent> events);
    void postEvent(const KeyEvent& event);
    void postModifier(const KeyEvent& event);
    void postKey(const KeyEvent& event);
    [[nodiscard]] bool strike(std::string_view text);
    [[nodiscard]] bool strike(xcb_keycode_t keycode);

    Desktop m_desktop;
    XTypedWindow m_window;
    LocksOff m_locksOff;
    HeldModifiers m_modifiers;
    std::uint64_t m_heldForStroke = 0;  // of these, what no event of their own has pressed
};
