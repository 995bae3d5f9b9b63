// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class AppState;
class SessionInhibitor;

/// Has a user who logs out warned for as long as the open vault has unsaved changes.
class LogoutGuard final : public QObject {
public:
    /// Both outlive this.
    LogoutGuard(SessionInhibitor& inhibitor, AppState& state, QObject* parent = nullptr);

private:
    void follow();

    SessionInhibitor& m_inhibitor;
    AppState& m_state;
    bool m_inhibits = false;
};
