// SPDX-License-Identifier: MIT
#pragma once

#include "core/autotype/AutoTypeService.h"
#include "core/autotype/HotKeyService.h"

#include <QObject>

class AppState;
class Preferences;

/// The hot key of the preferences. A press types the first entry that the front window's title speaks of. A locked
/// vault makes it silent, and so does a run that is going on: what is typed may hold the combination itself.
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

    /// Does what a press of the combination does, whether it is bound or not.
    void press();

    [[nodiscard]] bool isRegistered() const noexcept { return m_hotKey.isRegistered(); }

    /// Whether the combination should be bound and is not: another program has it, or there is no such key.
    [[nodiscard]] bool isRefused() const noexcept { return m_isWanted && !isRegistered(); }

    /// Whether the desktop knows of such combinations at all.
    [[nodiscard]] bool isPossible() const { return m_services.hotKeys.areGranted(); }

    /// Binds a refused combination if the program that had it has given it back, which no desktop reports.
    void tryAgain();

    /// The keyboard layout, which decides how the keys of a combination are labelled.
    [[nodiscard]] KeyboardLayout& layout() const noexcept { return m_services.autoType.layout(); }

signals:
    /// `isRegistered` or `isRefused` may have changed.
    void stateChanged();

private:
    void observePreferences();

    Services m_services;
    HotKeyService m_hotKey;
    bool m_observesPreferences = false;
    bool m_isWanted = false;  // not while it is given back
};
