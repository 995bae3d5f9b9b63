// SPDX-License-Identifier: MIT
#pragma once

#include "core/autotype/HotKeyHandler.h"
#include "core/autotype/HotKeyService.h"

#include <QObject>

class AppState;
class Preferences;

/// The hot key of the preferences, bound to the session: a press types the entry that the front window speaks of.
class GlobalHotKey final : public QObject {
public:
    /// All of it outlives this, and `autoType` is what the state types with.
    struct Services {
        HotKeys& hotKeys;
        Scheduler& scheduler;
        AutoTypeService& autoType;
        Preferences& preferences;
        AppState& state;
    };

    explicit GlobalHotKey(Services services, QObject* parent = nullptr);

    /// Binds the combination of the preferences, and again whenever its key or its modifiers change. A combination
    /// that the desktop refuses is told nowhere.
    void registerGlobalHotKey();

    /// Gives the combination back, at the end of the program or while another one is being recorded.
    void unregister() { m_service.unregister(); }

    [[nodiscard]] bool isRegistered() const noexcept { return m_service.isRegistered(); }

private:
    class Session final : public HotKeySession {
    public:
        explicit Session(AppState& state) noexcept : m_state(state) {}

        [[nodiscard]] bool isLocked() const override;
        [[nodiscard]] const KdbxDatabase* database() const override;
        void performAutoType(const KdbxEntry& entry) override;
        void setLastError(std::string_view message) override;

    private:
        AppState& m_state;
    };

    void observePreferences();

    Preferences& m_preferences;
    Session m_session;
    HotKeyHandler m_handler;
    HotKeyService m_service;
    bool m_observesPreferences = false;
};
