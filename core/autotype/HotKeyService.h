// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/HotKeys.h"
#include "core/platform/KeyboardLayout.h"
#include "core/platform/Scheduler.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

/// Binds one combination of keys to a handler, whatever application is in front. A combination that the desktop refuses
/// shows in `isRegistered` alone.
class HotKeyService {
public:
    static constexpr std::uint32_t defaultKeyCode = HotKey().keyCode;
    static constexpr std::uint32_t defaultModifiers = HotKey().modifiers;

    /// Both outlive the service.
    HotKeyService(HotKeys& hotKeys, Scheduler& scheduler);
    HotKeyService(const HotKeyService&) = delete;
    HotKeyService& operator=(const HotKeyService&) = delete;

    /// Binds a combination in place of the one before, which is gone also when this one is refused. The handler is
    /// called from the main loop after each press. Presses that come before it is called count as one: the program was
    /// busy, and the user pressed again.
    void registerHotKey(const HotKey& hotKey, std::function<void()> handler);

    /// Gives the combination back. Harmless at any time.
    void unregister();

    /// The combination that is bound now; none also after a refusal.
    [[nodiscard]] const std::optional<HotKey>& registration() const noexcept { return m_registration; }
    [[nodiscard]] bool isRegistered() const noexcept { return m_registration.has_value(); }

    /// A combination as the present layout names it: the modifiers' signs in the order Control, Option, Shift,
    /// Command, then the key: "⌥⌘A". `HotKeyFormatter` has its own names, which do not follow the layout.
    [[nodiscard]] static std::string displayString(const HotKey& hotKey, KeyboardLayout& layout);

private:
    void fireLater(HotKeys::Identifier identifier);
    void fire(HotKeys::Identifier identifier);
    [[nodiscard]] static std::string keyName(std::uint32_t keyCode, KeyboardLayout& layout);

    HotKeys& m_hotKeys;
    Scheduler& m_scheduler;
    std::optional<HotKey> m_registration;
    bool m_hasEventHandler = false;
    std::function<void()> m_handler;
    HotKeys::Identifier m_nextID = 1;        // never given twice: a late press of an old combination finds nothing
    HotKeys::Identifier m_currentID = 0;     // 0 when none
    HotKeys::Identifier m_waitingID = 0;     // of the press that the loop has not come to; 0 when none
    std::shared_ptr<HotKeyService*> m_self;  // the desktop and the loop hold it weakly
};
