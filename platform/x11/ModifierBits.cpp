// SPDX-License-Identifier: MIT
#include "platform/x11/ModifierBits.h"

#include "platform/x11/KeySymbols.h"
#include "platform/x11/XAnswer.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <cstddef>
#include <span>
#include <utility>

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
