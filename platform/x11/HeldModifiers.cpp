// SPDX-License-Identifier: MIT
#include "platform/x11/HeldModifiers.h"

#include "core/platform/KeyboardEvents.h"

#include <algorithm>
#include <ranges>

bool HeldModifiers::canHold(std::uint64_t flags) const {
    return std::ranges::all_of(modifierKeys, [&](const ModifierKey& modifier) {
        return (flags & modifier.flag) == 0 || m_held.contains(modifier.flag) ||
               m_layout.modifierKey(modifier.flag).has_value();
    });
}

std::uint64_t HeldModifiers::press(std::uint64_t flags) {
    std::uint64_t pressed = 0;
    for (const auto& [flag, code] : modifierKeys) {
        if ((flags & flag) == 0 || m_held.contains(flag))
            continue;
        const auto keycode = m_layout.modifierKey(flag);
        if (!keycode)
            continue;
        m_posted.press(*keycode);
        m_held.emplace(flag, *keycode);
        pressed |= flag;
    }
    return pressed;
}

void HeldModifiers::release(std::uint64_t flags) {
    for (const auto& [flag, code] : std::views::reverse(modifierKeys)) {
        const auto held = m_held.find(flag);
        if ((flags & flag) == 0 || held == m_held.end())
            continue;
        m_posted.release(held->second);
        m_held.erase(held);
    }
}
