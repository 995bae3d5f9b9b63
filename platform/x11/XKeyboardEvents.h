// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/KeyboardEvents.h"
#include "platform/x11/HotKeyState.h"
#include "platform/x11/PostedKeys.h"
#include "platform/x11/SpareKeys.h"
#include "platform/x11/XConnection.h"
#include "platform/x11/XKeyboardLayout.h"

#include <cstdint>
#include <memory>
#include <vector>

/// The keyboard of an X server, posted on through its XTEST extension. There is no permission to ask for: where the
/// extension is, every program may use it.
class XKeyboardEvents final : public KeyboardEvents {
public:
    /// The desktop; all of it outlives the keyboard.
    struct Desktop {
        XConnection& connection;
        XKeyboardLayout& layout;
        const HotKeyState& hotKey;
    };

    /// Needs Qt's loop.
    explicit XKeyboardEvents(Desktop desktop);

    [[nodiscard]] bool hasPermission() override;
    [[nodiscard]] bool canRequestPermission() const override { return false; }
    void requestPermission() override {}
    [[nodiscard]] std::uint64_t heldModifiers() override;
    [[nodiscard]] bool isHotKeyHeld() override;
    void releaseHeldKeys() override;

    /// The keyboard outlives the source.
    [[nodiscard]] std::unique_ptr<KeyEventSource> makeSource(const DesktopWindow& window) override;

private:
    [[nodiscard]] std::vector<xcb_keycode_t> heldModifierKeys();
    [[nodiscard]] std::uint64_t flagsOf(unsigned modifiers);

    Desktop m_desktop;
    PostedKeys m_posted;
    SpareKeys m_spareKeys;
};
