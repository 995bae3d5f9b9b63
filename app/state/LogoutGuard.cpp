// SPDX-License-Identifier: MIT
#include "app/state/LogoutGuard.h"

#include "app/state/AppState.h"
#include "core/platform/SessionInhibitor.h"

#include <utility>

LogoutGuard::LogoutGuard(SessionInhibitor& inhibitor, AppState& state, QObject* parent)
    : QObject(parent), m_inhibitor(inhibitor), m_state(state) {
    for (const auto signal : {&AppState::isDirtyChanged, &AppState::isLockedChanged})
        connect(&state, signal, this, &LogoutGuard::follow);
    follow();
}

// A vault that was locked with changes that could not be saved counts as unsaved, but there is nothing left to save.
void LogoutGuard::follow() {
    const bool inhibits = m_state.isDirty() && !m_state.isLocked();
    if (std::exchange(m_inhibits, inhibits) == inhibits)
        return;
    if (inhibits)
        m_inhibitor.inhibit("Kaydedilmemiş değişiklikler var");
    else
        m_inhibitor.release();
}
