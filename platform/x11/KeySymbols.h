// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/XAnswer.h"

#include <xcb/xcb.h>

#include <span>

/// The symbols of all keys, at the time of construction. None where they could not be read.
class KeySymbols {
public:
    explicit KeySymbols(xcb_connection_t* connection);

    /// The symbols of a key, as many for each: by group, in it by level. Empty for a keycode that no key has.
    [[nodiscard]] std::span<const xcb_keysym_t> of(xcb_keycode_t keycode) const noexcept;

    [[nodiscard]] bool has(xcb_keycode_t keycode, xcb_keysym_t symbol) const noexcept;

private:
    xcb_keycode_t m_firstKeycode;
    XAnswer<xcb_get_keyboard_mapping_reply_t> m_mapping;
};
