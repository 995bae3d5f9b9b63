// SPDX-License-Identifier: MIT
#include "platform/x11/XKeymap.h"

#include "core/platform/KeyboardEvents.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

namespace {

struct HeldKey {
    std::uint64_t flag;
    xkb_keysym_t symbol;
    std::array<xcb_keycode_t, 2> usual;  // tried first
};

// In the order in which the keys are held. The symbol decides and not the position: users exchange Ctrl and Caps Lock,
// Alt and Super. 92 is no real key; it is AltGr in every layout, also in those whose right Alt is an Alt.
constexpr std::array heldKeys{HeldKey{KeyFlag::shift, XKB_KEY_Shift_L, {50, 62}},
                              HeldKey{KeyFlag::control, XKB_KEY_Super_L, {133, 134}},
                              HeldKey{KeyFlag::option, XKB_KEY_ISO_Level3_Shift, {108, 92}},
                              HeldKey{KeyFlag::command, XKB_KEY_Control_L, {37, 105}}};

std::ptrdiff_t utf16Units(std::string_view text) {
    return std::ranges::count_if(text, [](char unit) { return (unit & 0xC0) != 0x80; }) +
           std::ranges::count_if(text, [](char unit) { return (unit & 0xF8) == 0xF0; });
}

}  // namespace

std::unique_ptr<XKeymap> XKeymap::ofDevice(xcb_connection_t* connection, std::int32_t device) {
    const Reference<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    if (!context)
        return nullptr;
    Reference<xkb_keymap> keymap(
        xkb_x11_keymap_new_from_device(context.get(), connection, device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap)
        return nullptr;
    const Reference<xkb_state> now(xkb_x11_state_new_from_device(keymap.get(), connection, device));
    if (!now)
        return nullptr;
    const auto group = xkb_state_serialize_layout(now.get(), XKB_STATE_LAYOUT_EFFECTIVE);
    return std::unique_ptr<XKeymap>(new XKeymap(std::move(keymap), group));
}

XKeymap::XKeymap(Reference<xkb_keymap> keymap, xkb_layout_index_t group)
    : m_keymap(std::move(keymap)),
      m_group(group),
      m_plain(stateWith(0)),
      m_shift(stateWhileHeld(KeyFlag::shift)),
      m_option(stateWhileHeld(KeyFlag::option)),
      m_shiftAndOption(stateWhileHeld(KeyFlag::shift | KeyFlag::option)) {}

std::string XKeymap::text(xcb_keycode_t keycode, KeyboardLayout::Modifiers modifiers) const {
    const auto& state = modifiers == KeyboardLayout::Modifiers::none     ? m_plain
                        : modifiers == KeyboardLayout::Modifiers::shift  ? m_shift
                        : modifiers == KeyboardLayout::Modifiers::option ? m_option
                                                                         : m_shiftAndOption;
    constexpr std::ptrdiff_t longest = 4;
    std::array<char, 64> buffer{};
    if (!state)
        return {};
    const int length = xkb_state_key_get_utf8(state.get(), keycode, buffer.data(), buffer.size());
    if (length <= 0 || static_cast<std::size_t>(length) >= buffer.size())
        return {};
    const std::string_view text(buffer.data(), static_cast<std::size_t>(length));
    return utf16Units(text) <= longest ? std::string(text) : std::string();
}

std::optional<xcb_keycode_t> XKeymap::modifierKey(std::uint64_t flag) const {
    const auto* const key = std::ranges::find(heldKeys, flag, &HeldKey::flag);
    if (key == heldKeys.end())
        return std::nullopt;
    for (const auto keycode : key->usual)
        if (hasSymbol(keycode, key->symbol))
            return keycode;
    for (auto keycode = xkb_keymap_min_keycode(m_keymap.get()); keycode <= xkb_keymap_max_keycode(m_keymap.get());
         ++keycode)
        if (hasSymbol(keycode, key->symbol))
            return static_cast<xcb_keycode_t>(keycode);
    return std::nullopt;
}

xkb_mod_mask_t XKeymap::modifiersOf(xcb_keycode_t keycode) const {
    const auto hands = stateWith(0);
    if (!hands)
        return 0;
    xkb_state_update_key(hands.get(), keycode, XKB_KEY_DOWN);
    if (xkb_state_serialize_mods(hands.get(), XKB_STATE_MODS_LOCKED) != 0)
        return 0;
    return xkb_state_serialize_mods(hands.get(), XKB_STATE_MODS_DEPRESSED);
}

XKeymap::Reference<xkb_state> XKeymap::stateWith(xkb_mod_mask_t modifiers) const {
    Reference<xkb_state> state(xkb_state_new(m_keymap.get()));
    if (state)
        xkb_state_update_mask(state.get(), modifiers, 0, 0, 0, 0, m_group);
    return state;
}

// Only the keymap knows what holding the keys leads to: in one, AltGr is another key under Shift.
XKeymap::Reference<xkb_state> XKeymap::stateWhileHeld(std::uint64_t flags) const {
    const auto hands = stateWith(0);
    if (!hands)
        return nullptr;
    for (const auto& [flag, symbol, usual] : heldKeys) {
        if ((flags & flag) == 0)
            continue;
        const auto keycode = modifierKey(flag);
        if (!keycode)
            return nullptr;
        xkb_state_update_key(hands.get(), *keycode, XKB_KEY_DOWN);
    }
    return stateWith(xkb_state_serialize_mods(hands.get(), XKB_STATE_MODS_DEPRESSED));
}

bool XKeymap::hasSymbol(xkb_keycode_t keycode, xkb_keysym_t symbol) const {
    const auto group = xkb_state_key_get_layout(m_plain.get(), keycode);
    if (group == XKB_LAYOUT_INVALID)
        return false;
    const xkb_keysym_t* symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(m_keymap.get(), keycode, group, 0, &symbols);
    return count == 1 && symbols[0] == symbol;
}
