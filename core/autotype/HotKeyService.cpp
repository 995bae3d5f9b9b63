// SPDX-License-Identifier: MIT
#include "core/autotype/HotKeyService.h"

#include "core/text/Text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <limits>
#include <string_view>
#include <utility>

namespace {

using namespace std::chrono_literals;

struct Sign {
    HotKeyModifier modifier;
    std::string_view sign;
};

// In the order in which they are written.
constexpr std::array signs{Sign{hotKeyControl, "⌃"}, Sign{hotKeyOption, "⌥"}, Sign{hotKeyShift, "⇧"},
                           Sign{hotKeyCommand, "⌘"}};

struct KeyName {
    std::uint32_t code;
    std::string_view name;
};

constexpr std::array keyNames{KeyName{36, "↩"},    KeyName{48, "⇥"},   KeyName{49, "Space"}, KeyName{53, "⎋"},
                              KeyName{96, "F5"},   KeyName{97, "F6"},  KeyName{98, "F7"},    KeyName{99, "F3"},
                              KeyName{100, "F8"},  KeyName{101, "F9"}, KeyName{103, "F11"},  KeyName{109, "F10"},
                              KeyName{111, "F12"}, KeyName{118, "F4"}, KeyName{120, "F2"},   KeyName{122, "F1"}};

// Delete and its like are control characters under some layouts, and no name.
bool isPrintable(std::string_view text) {
    return !text.empty() && std::ranges::none_of(text, [](char byte) {
        const auto value = static_cast<unsigned char>(byte);
        return value < 0x20 || value == 0x7F;
    });
}

}  // namespace

HotKeyService::HotKeyService(HotKeys& hotKeys, Scheduler& scheduler)
    : m_hotKeys(hotKeys), m_scheduler(scheduler), m_self(std::make_shared<HotKeyService*>(this)) {}

void HotKeyService::registerHotKey(const HotKey& hotKey, std::function<void()> handler) {
    unregister();
    m_handler = std::move(handler);
    m_hasEventHandler = m_hotKeys.installHandler([weak = std::weak_ptr(m_self)](HotKeys::Identifier identifier) {
        if (const auto self = weak.lock())
            (*self)->fireLater(identifier);
    });
    m_currentID = m_nextID++;
    if (m_hotKeys.registerHotKey(hotKey, m_currentID))
        m_registration = hotKey;
    else
        m_handler = nullptr;
}

void HotKeyService::unregister() {
    if (m_registration)
        m_hotKeys.unregisterHotKey(m_currentID);
    m_currentID = 0;
    m_registration.reset();
    m_handler = nullptr;
    if (m_hasEventHandler)
        m_hotKeys.removeHandler();
    m_hasEventHandler = false;
}

// The desktop is not kept waiting for what the handler does.
void HotKeyService::fireLater(HotKeys::Identifier identifier) {
    if (std::exchange(m_waitingID, identifier) == identifier)
        return;
    m_scheduler.after(0ns, [weak = std::weak_ptr(m_self), identifier] {
        if (const auto self = weak.lock())
            (*self)->fire(identifier);
    });
}

void HotKeyService::fire(HotKeys::Identifier identifier) {
    if (m_waitingID == identifier)
        m_waitingID = 0;
    if (identifier != m_currentID)
        return;
    if (const auto handler = m_handler)  // a copy: it may register anew
        handler();
}

std::string HotKeyService::displayString(const HotKey& hotKey, KeyboardLayout& layout) {
    std::string text;
    for (const auto& [modifier, sign] : signs)
        if ((hotKey.modifiers & modifier) != 0)
            text += sign;
    return text + keyName(hotKey.keyCode, layout);
}

std::string HotKeyService::keyName(std::uint32_t keyCode, KeyboardLayout& layout) {
    if (const auto* const named = std::ranges::find(keyNames, keyCode, &KeyName::code); named != keyNames.end())
        return std::string(named->name);
    if (keyCode <= std::numeric_limits<std::uint16_t>::max() && layout.isAvailable())
        if (const auto output = layout.translate(static_cast<std::uint16_t>(keyCode), KeyboardLayout::Modifiers::none);
            isPrintable(output))
            return Text::uppercased(output);
    return "#" + std::to_string(keyCode);
}
