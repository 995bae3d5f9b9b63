// SPDX-License-Identifier: MIT
#include "core/autotype/HotKeyService.h"

#include "core/autotype/KeyLabels.h"
#include "core/text/Text.h"

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

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
    return KeyLabels::signsOf(hotKey.modifiers) + keyName(hotKey.keyCode, layout);
}

std::string HotKeyService::keyName(std::uint32_t keyCode, KeyboardLayout& layout) {
    switch (keyCode) {
        case VirtualKey::enter:
            return "↩";
        case VirtualKey::tab:
            return "⇥";
        case VirtualKey::space:
            return "Space";
        case VirtualKey::escape:
            return "⎋";
        default:
            break;
    }
    if (const auto number = VirtualKey::functionNumber(keyCode); number && *number <= 12)
        return "F" + std::to_string(*number);
    const auto label = KeyLabels::under(layout, keyCode);
    return label.empty() ? "#" + std::to_string(keyCode) : Text::uppercased(label);
}
