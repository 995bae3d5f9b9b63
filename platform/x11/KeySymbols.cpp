// SPDX-License-Identifier: MIT
#include "platform/x11/KeySymbols.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

XAnswer<xcb_get_keyboard_mapping_reply_t> mappingOfAllKeys(xcb_connection_t* connection) {
    const auto* setup = xcb_get_setup(connection);
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    return XAnswer<xcb_get_keyboard_mapping_reply_t>(xcb_get_keyboard_mapping_reply(
        connection, xcb_get_keyboard_mapping(connection, setup->min_keycode, count), nullptr));
}

}  // namespace

KeySymbols::KeySymbols(xcb_connection_t* connection)
    : m_firstKeycode(xcb_get_setup(connection)->min_keycode), m_mapping(mappingOfAllKeys(connection)) {}

std::span<const xcb_keysym_t> KeySymbols::of(xcb_keycode_t keycode) const noexcept {
    if (!m_mapping || keycode < m_firstKeycode)
        return {};
    const std::span<const xcb_keysym_t> all(
        xcb_get_keyboard_mapping_keysyms(m_mapping.get()),
        static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(m_mapping.get())));
    const std::size_t width = m_mapping->keysyms_per_keycode;
    const std::size_t first = (keycode - m_firstKeycode) * width;
    return first + width <= all.size() ? all.subspan(first, width) : std::span<const xcb_keysym_t>();
}

bool KeySymbols::has(xcb_keycode_t keycode, xcb_keysym_t symbol) const noexcept {
    return std::ranges::count(of(keycode), symbol) > 0;
}
