// SPDX-License-Identifier: MIT
#include "app/state/AutoLock.h"

#include "app/state/AppState.h"
#include "app/state/Preferences.h"
#include "core/platform/UserInput.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr auto oneLeaving = 3s;
constexpr auto longestLookAway = 5s;  // a timer stands still while the computer sleeps, and is late by as much
constexpr auto inputTolerance = 1s;   // the last input's time is measured anew at each look

}  // namespace

AutoLock::AutoLock(Services services, QObject* parent) : QObject(parent), m_services(services) {
    m_services.events.observe([lock = QPointer<AutoLock>(this)](SessionEvents::Event event, SessionEvents::Hold hold) {
        if (lock)
            lock->take(event, std::move(hold));
    });
    connect(&m_services.state, &AppState::derivationChanged, this, &AutoLock::lockAfterDerivation);
    connect(&m_services.state, &AppState::isDirtyChanged, this, [this] { m_failedAt.reset(); });
    connect(&m_services.state, &AppState::isLockedChanged, this, &AutoLock::beginWatch);
    connect(&m_services.preferences, &Preferences::lockAfterMinutesChanged, this, &AutoLock::beginWatch);
    beginWatch();
}

void AutoLock::take(SessionEvents::Event event, SessionEvents::Hold hold) {
    if (m_services.preferences.lockWithSession() && !hasJustFailed())
        lock(std::move(hold));
    if (event == SessionEvents::Event::ended)
        m_services.state.keepUnsaved();
}

/// What comes while a lock is under way is answered by that lock, and waits for it.
void AutoLock::lock(SessionEvents::Hold hold) {
    if (m_services.state.isLocked() && !m_services.state.derivation())
        return;
    m_holds.push_back(std::move(hold));
    if (m_isLocking || m_isPutOff)
        return;
    if (m_services.state.derivation()) {
        m_isPutOff = true;
        return;
    }
    m_isLocking = true;
    m_services.state.lockAutomatically();
    m_isLocking = false;
    m_holds.clear();
    if (!m_services.state.isLocked())
        m_failedAt = m_services.scheduler.steadyNow();
}

/// The desktop's other parts report the same leaving a moment later.
bool AutoLock::hasJustFailed() const {
    return m_failedAt && m_services.scheduler.steadyNow() - *m_failedAt < oneLeaving;
}

/// Also after an opening: its user has left.
void AutoLock::lockAfterDerivation() {
    if (!m_isPutOff || m_services.state.derivation())
        return;
    m_services.scheduler.after({}, [lock = QPointer<AutoLock>(this)] {
        if (!lock || !lock->m_isPutOff || lock->m_services.state.derivation())
            return;
        lock->m_isPutOff = false;
        const auto holds = std::exchange(lock->m_holds, {});
        lock->lock(nullptr);
    });
}

void AutoLock::beginWatch() {
    m_services.scheduler.cancel(std::exchange(m_look, 0));
    if (m_services.state.isLocked() || limit() == 0s)
        return;
    m_lastLook = m_lastInput = m_services.scheduler.steadyNow();
    m_asleep = m_services.scheduler.timeAsleep();
    m_slept = {};
    m_hasTried = false;
    planLook(limit());
}

void AutoLock::planLook(Duration delay) {
    m_look =
        m_services.scheduler.after(std::clamp<Duration>(delay, 1s, longestLookAway), [lock = QPointer<AutoLock>(this)] {
            if (lock)
                lock->look();
        });
}

// A lock that has failed is not tried again before the user has come and gone: what it could not save it cannot save a
// moment later, and a question that was answered would come up again and again.
void AutoLock::look() {
    const auto idle = idleTime();
    const bool isDue = idle >= limit();
    planLook(isDue ? longestLookAway : limit() - idle);
    if (isDue && !std::exchange(m_hasTried, true))
        lock(nullptr);
}

AutoLock::Duration AutoLock::limit() const {
    return std::chrono::minutes(m_services.preferences.lockAfterMinutes());
}

/// The time without input, the computer's sleep included. Input that follows a sleep does not undo it: a user who wakes
/// the computer after hours finds the vault locked.
AutoLock::Duration AutoLock::idleTime() {
    const auto now = m_services.scheduler.steadyNow();
    const auto asleep = m_services.scheduler.timeAsleep();
    const auto lastLook = std::exchange(m_lastLook, now);
    const auto slept = asleep - std::exchange(m_asleep, asleep);
    m_slept += slept;
    const auto idleAtWaking = lastLook - m_lastInput + m_slept;
    if (slept > inputTolerance && idleAtWaking >= limit())
        return idleAtWaking;
    const auto lastInput = now - m_services.input.idleTime();
    if (lastInput > m_lastInput + inputTolerance) {
        m_lastInput = lastInput;
        m_slept = {};
        m_hasTried = false;
    }
    return now - m_lastInput + m_slept;
}
