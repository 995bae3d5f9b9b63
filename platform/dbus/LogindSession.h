// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/SessionEvents.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <optional>

/// What logind says of the user's session (org.freedesktop.login1), and the delays that it grants. It waits for no
/// answer. Without a logind nothing happens.
///
/// Signals are taken from any sender: to ask for the owner of a name would be to wait for the bus, and all that
/// a stranger could do is to lock the vault.
class LogindSession final : public QObject {
    Q_OBJECT

public:
    explicit LogindSession(SessionEvents::Happened happened, QObject* parent = nullptr);

    /// From now on sleep waits for the events' holds.
    void begin(const QDBusConnection& bus);

    /// From now on the computer's end waits for the events' holds too, for that reason; without one no more.
    void setEndDelayed(const std::optional<QString>& reason);

private:
    Q_SLOT void lockSession();
    Q_SLOT void changeProperties(const QString& interface, const QVariantMap& changed, const QStringList& invalidated);
    Q_SLOT void removeSession(const QString& id, const QDBusObjectPath& path);
    Q_SLOT void prepareForSleep(bool begins);
    Q_SLOT void prepareForShutdown(bool begins);

    using Lock = QDBusUnixFileDescriptor;  // held for as long as it is open

    void findSession(const QString& name, std::function<void()> otherwise);
    void follow(const QString& path);
    void takeLock(const QString& what, const QString& reason, const std::function<void(const Lock& lock)>& taken);
    void delaySleep();
    void delayEnd();
    static SessionEvents::Hold holdOf(Lock& lock);

    SessionEvents::Happened m_happened;
    std::optional<QDBusConnection> m_bus;  // none before `begin`
    QString m_session;                     // its path; empty while it is not known
    Lock m_sleep;
    Lock m_end;
    std::optional<QString> m_endReason;
};
