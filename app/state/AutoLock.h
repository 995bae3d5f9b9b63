// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/Scheduler.h"
#include "core/platform/SessionEvents.h"

#include <QObject>

#include <chrono>
#include <optional>
#include <vector>

class AppState;
class Preferences;
class UserInput;

/// Locks the vault in its user's absence: as the session is left, and after as many minutes without input as the
/// preferences say. What cannot be saved keeps the vault open.
class AutoLock final : public QObject {
public:
    /// All of it outlives this.
    struct Services {
        SessionEvents& events;
        UserInput& input;
        Scheduler& scheduler;
        Preferences& preferences;
        AppState& state;
    };

    explicit AutoLock(Services services, QObject* parent = nullptr);

private:
    using Duration = std::chrono::nanoseconds;

    void take(SessionEvents::Event event, SessionEvents::Hold hold);
    void lock(SessionEvents::Hold hold);
    void lockAfterDerivation();
    [[nodiscard]] bool hasJustFailed() const;

    void beginWatch();
    void planLook(Duration delay);
    void look();
    [[nodiscard]] Duration limit() const;
    Duration idleTime();

    Services m_services;
    std::vector<SessionEvents::Hold> m_holds;  // of the lock that is under way or follows a derivation
    bool m_isLocking = false;
    bool m_isPutOff = false;             // until a derivation has ended
    std::optional<Duration> m_failedAt;  // by the scheduler's steady clock

    Scheduler::Task m_look = 0;  // none while there is nothing to watch
    Duration m_lastLook{};       // these two by the scheduler's steady clock
    Duration m_lastInput{};
    Duration m_asleep{};      // the scheduler's, at the last look
    Duration m_slept{};       // since the last input
    bool m_hasTried = false;  // since then
};
