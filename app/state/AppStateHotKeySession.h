// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/AppState.h"
#include "core/autotype/HotKeyHandler.h"

#include <string>
#include <string_view>

/// The state as a press of the global hot key meets it. The state outlives it.
class AppStateHotKeySession final : public HotKeySession {
public:
    explicit AppStateHotKeySession(AppState& state) noexcept : m_state(state) {}

    [[nodiscard]] bool isLocked() const override { return m_state.isLocked(); }
    [[nodiscard]] const KdbxDatabase* database() const override {
        return m_state.database() ? &*m_state.database() : nullptr;
    }
    void performAutoType(const KdbxEntry& entry) override { m_state.performAutoType(&entry); }
    void setLastError(std::string_view message) override { m_state.setLastError(std::string(message)); }

private:
    AppState& m_state;
};
