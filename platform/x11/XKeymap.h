// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/KeyboardLayout.h"

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

/// What the keys of a keyboard mean, in the group that was active when it was loaded.
class XKeymap {
public:
    /// Loads a device's keymap from the server, in less than a millisecond. Null where that fails.
    [[nodiscard]] static std::unique_ptr<XKeymap> ofDevice(xcb_connection_t* connection, std::int32_t device);

    /// What a key gives with no lock on: at most four UTF-16 units, empty where it gives no text or more.
    [[nodiscard]] std::string text(xcb_keycode_t keycode, KeyboardLayout::Modifiers modifiers) const;

    /// The key that has to be held for a `KeyFlag`: Shift for `shift`, AltGr for `option`, Ctrl for `command` and Super
    /// for `control`. Nothing where the keyboard has no such key.
    [[nodiscard]] std::optional<xcb_keycode_t> modifierKey(std::uint64_t flag) const;

    /// The modifiers that a key holds while it is down, as bits of a key event's state; 0 for one that locks.
    [[nodiscard]] xkb_mod_mask_t modifiersOf(xcb_keycode_t keycode) const;

private:
    struct Unreference {
        void operator()(xkb_context* context) const noexcept { xkb_context_unref(context); }
        void operator()(xkb_keymap* keymap) const noexcept { xkb_keymap_unref(keymap); }
        void operator()(xkb_state* state) const noexcept { xkb_state_unref(state); }
    };
    template <class Type>
    using Reference = std::unique_ptr<Type, Unreference>;

    XKeymap(Reference<xkb_keymap> keymap, xkb_layout_index_t group);

    [[nodiscard]] Reference<xkb_state> stateWith(xkb_mod_mask_t modifiers) const;
    [[nodiscard]] Reference<xkb_state> stateWhileHeld(std::uint64_t flags) const;
    [[nodiscard]] bool hasSymbol(xkb_keycode_t keycode, xkb_keysym_t symbol) const;

    Reference<xkb_keymap> m_keymap;
    xkb_layout_index_t m_group;
    Reference<xkb_state> m_plain;
    Reference<xkb_state> m_shift;  // this one and those below: null where the keyboard has no such key
    Reference<xkb_state> m_option;
    Reference<xkb_state> m_shiftAndOption;
};
