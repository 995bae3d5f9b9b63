// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/PostedKeys.h"
#include "platform/x11/XKeyboardLayout.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <map>

/// The modifier keys that a run holds down, by `KeyFlag` bits.
class HeldModifiers {
public:
    /// Both outlive it. Keys that are held at its end are left to `posted` to release.
    HeldModifiers(XKeyboardLayout& layout, PostedKeys& posted) noexcept : m_layout(layout), m_posted(posted) {}

    /// Whether the keyboard has a key for each of the flags.
    [[nodiscard]] bool canHold(std::uint64_t flags) const;

    /// Presses the keys that are not held yet, in the order of `modifierKeys`. The result is their flags.
    std::uint64_t press(std::uint64_t flags);

    /// Releases the keys that are held, in the reverse order.
    void release(std::uint64_t flags);

private:
    XKeyboardLayout& m_layout;
    PostedKeys& m_posted;
    std::map<std::uint64_t, xcb_keycode_t> m_held;  // by flag: the layout may change until a key is released
};
