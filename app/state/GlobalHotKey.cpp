// SPDX-License-Identifier: MIT
#include "app/state/GlobalHotKey.h"

#include "app/state/AppState.h"
#include "app/state/Preferences.h"
#include "core/autotype/WindowMatcher.h"

GlobalHotKey::GlobalHotKey(Services services, QObject* parent)
    : QObject(parent), m_services(services), m_hotKey(services.hotKeys, services.scheduler) {}

void GlobalHotKey::registerGlobalHotKey() {
    observePreferences();
    const auto& preferences = m_services.preferences;
    m_hotKey.registerHotKey({.keyCode = preferences.hotKeyCode(), .modifiers = preferences.hotKeyModifiers()},
                            [this] { press(); });
    m_isWanted = true;
    emit stateChanged();
}

void GlobalHotKey::unregister() {
    m_hotKey.unregister();
    m_isWanted = false;
    emit stateChanged();
}

void GlobalHotKey::tryAgain() {
    if (isRefused())
        registerGlobalHotKey();
}

void GlobalHotKey::observePreferences() {
    if (m_observesPreferences)
        return;
    m_observesPreferences = true;
    connect(&m_services.preferences, &Preferences::hotKeyCodeChanged, this, &GlobalHotKey::registerGlobalHotKey);
    connect(&m_services.preferences, &Preferences::hotKeyModifiersChanged, this, &GlobalHotKey::registerGlobalHotKey);
}

void GlobalHotKey::press() {
    auto& autoType = m_services.autoType;
    auto& state = m_services.state;
    if (autoType.isTyping())
        return;
    autoType.captureTarget();
    // A vault that is about to be locked types no more.
    if (state.isLocked() || !state.database() || state.derivation() == AppState::DerivationPurpose::locking)
        return;
    const WindowMatcher matcher(autoType.frontmostWindowTitle().value_or(""));
    const auto* const match = matcher.firstMatch(state.database()->root);
    if (match == nullptr) {
        state.setLastError("Ön plandaki pencereyle eşleşen bir kayıt bulunamadı.");
        return;
    }
    const KdbxEntry entry = *match;  // a copy: typing an entry changes the vault
    state.performAutoType(&entry);
}
