// SPDX-License-Identifier: MIT
#include "app/state/GlobalHotKey.h"

#include "app/state/AppState.h"
#include "app/state/Preferences.h"
#include "core/autotype/KeyNames.h"

GlobalHotKey::GlobalHotKey(Services services, QObject* parent)
    : QObject(parent),
      m_preferences(services.preferences),
      m_layout(services.autoType.layout()),
      m_areGranted(services.hotKeys.areGranted()),
      m_session(services.state),
      m_handler(services.autoType, m_session),
      m_service(services.hotKeys, services.scheduler) {}

void GlobalHotKey::registerGlobalHotKey() {
    observePreferences();
    m_service.registerHotKey({.keyCode = m_preferences.hotKeyCode(), .modifiers = m_preferences.hotKeyModifiers()},
                             [this] { m_handler.press(); });
    m_isWanted = true;
    emit stateChanged();
}

void GlobalHotKey::unregister() {
    m_service.unregister();
    m_isWanted = false;
    emit stateChanged();
}

void GlobalHotKey::tryAgain() {
    if (isRefused())
        registerGlobalHotKey();
}

std::string GlobalHotKey::keyNames(const HotKey& hotKey) const {
    return KeyNames::describe(hotKey, m_layout);
}

void GlobalHotKey::observePreferences() {
    if (m_observesPreferences)
        return;
    m_observesPreferences = true;
    connect(&m_preferences, &Preferences::hotKeyCodeChanged, this, &GlobalHotKey::registerGlobalHotKey);
    connect(&m_preferences, &Preferences::hotKeyModifiersChanged, this, &GlobalHotKey::registerGlobalHotKey);
}

bool GlobalHotKey::Session::isLocked() const {
    // A vault that is about to be locked types no more.
    return m_state.isLocked() || m_state.derivation() == AppState::DerivationPurpose::locking;
}

const KdbxDatabase* GlobalHotKey::Session::database() const {
    return m_state.database() ? &*m_state.database() : nullptr;
}

void GlobalHotKey::Session::performAutoType(const KdbxEntry& entry) {
    m_state.performAutoType(&entry);
}

void GlobalHotKey::Session::setLastError(std::string_view message) {
    m_state.setLastError(std::string(message));
}
