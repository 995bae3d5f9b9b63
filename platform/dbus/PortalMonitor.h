// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/SessionEvents.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QObject>

/// What the desktop's portal says of the session (org.freedesktop.portal.Inhibit, CreateMonitor), and its screen savers
/// by themselves (ActiveChanged). It waits for no answer.
class PortalMonitor final : public QObject {
    Q_OBJECT

public:
    PortalMonitor(SessionEvents::Happened happened, const QDBusConnection& bus, QObject* parent = nullptr);

private:
    Q_SLOT void changeState(const QDBusMessage& change);
    Q_SLOT void changeScreenSaver(bool isActive);

    void createMonitor();
    void agreeToEnd(const QDBusObjectPath& monitor);

    SessionEvents::Happened m_happened;
    QDBusConnection m_bus;
    bool m_isScreenSaverActive = false;  // by the portal
    unsigned int m_sessionState = 0;
};
