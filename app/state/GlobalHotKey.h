// SPDX-License-Identifier: MIT
#pragma once

#include "core/autotype/HotKeyHandler.h"
#include "core/autotype/HotKeyService.h"

#include <QObject>

#include <string>

class AppState;
class Preferences;

/// The hot key of the preferences, bound to the session: a press types the entry that the front window speaks of.
class GlobalHotKey final : public QObject {
    Q_OBJECT

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
    /// that the desktop refuses is no failure: it shows in `isRefused`.
    void registerGlobalHotKey();

    /// Gives the combination back, at the end of the program or while another one is being recorded.
    void unregister();

    [[nodiscard]] bool isRegistered() const noexcept { return m_service.isRegistered(); }

    /// Whether the combination should be bound and is not: another program has it, or there is no such key.
    [[nodiscard]] bool isRefused() const noexcept { return m_isWanted && !isRegistered(); }

    /// Whether the desktop knows of such combinations at all.
    [[nodiscard]] bool isPossible() const { return m_areGranted; }

    /// Binds a refused combination if whoever had it has let it go. Nobody tells of that.
    void tryAgain();

    /// A combination as the keys are labelled under the present layout: "Ctrl+Alt+A".
    [[nodiscard]] std::string keyNames(const HotKey& hotKey) const;

signals:
    /// `isRegistered` or `isRefused` may have changed.
    void stateChanged();

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
    KeyboardLayout& m_layout;
    bool m_areGranted;
    Session m_session;
    HotKeyHandler m_handler;
    HotKeyService m_service;
    bool m_observesPreferences = false;
    bool m_isWanted = false;  // not while it is given back
};
