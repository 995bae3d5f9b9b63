// SPDX-License-Identifier: MIT
#include "platform/x11/ModifierBits.h"

#include "platform/x11/XAnswer.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>

namespace {

/// The symbols of all keys, as many for each.
class KeySymbols {
public:
    explicit KeySymbols(xcb_connection_t* connection)
        : m_firstKeycode(xcb_get_setup(connection)->min_keycode),
          m_mapping(xcb_get_keyboard_mapping_reply(
              connection,
              xcb_get_keyboard_mapping(
                  connection, m_firstKeycode,
                  static_cast<std::uint8_t>(xcb_get_setup(connection)->max_keycode - m_firstKeycode + 1)),
              nullptr)) {}

    [[nodiscard]] bool has(xcb_keycode_t keycode, xcb_keysym_t symbol) const {
        if (!m_mapping || keycode < m_firstKeycode)
            return false;
        const std::span all(xcb_get_keyboard_mapping_keysyms(m_mapping.get()),
                            static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(m_mapping.get())));
        const std::size_t width = m_mapping->keysyms_per_keycode;
        const std::size_t first = (keycode - m_firstKeycode) * width;
        return first + width <= all.size() && std::ranges::count(all.subspan(first, width), symbol) > 0;
    }

private:
    xcb_keycode_t m_firstKeycode;
    XAnswer<xcb_get_keyboard_mapping_reply_t> m_mapping;
};

}  // namespace

ModifierBits ModifierBits::of(xcb_connection_t* connection) {
    constexpr unsigned firstFreeModifier = 3;  // Shift, Lock and Control come before it
    constexpr unsigned modifiers = 8;

    ModifierBits bits;
    const XAnswer<xcb_get_modifier_mapping_reply_t> map(
        xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr));
    if (!map)
        return bits;
    const KeySymbols symbols(connection);
    const std::size_t width = map->keycodes_per_modifier;
    const std::span keycodes(xcb_get_modifier_mapping_keycodes(map.get()), modifiers * width);
    for (unsigned modifier = firstFreeModifier; modifier < modifiers; ++modifier)
        for (const auto keycode : keycodes.subspan(modifier * width, width))
            for (const auto& [bit, symbol] :
                 {std::pair(&bits.alt, XKB_KEY_Alt_L), std::pair(&bits.super, XKB_KEY_Super_L),
                  std::pair(&bits.numLock, XKB_KEY_Num_Lock)})
                if (*bit == 0 && symbols.has(keycode, symbol))
                    *bit = static_cast<std::uint16_t>(1U << modifier);
    return bits;
}
