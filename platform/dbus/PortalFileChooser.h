// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/FileChooser.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QVariantMap>

/// The panels of the desktop's portal (org.freedesktop.portal.FileChooser).
class PortalFileChooser final : public QObject, public FileChooser {
    Q_OBJECT

public:
    /// Asks the bus for a portal, and does not wait for the answer.
    explicit PortalFileChooser(QObject* parent = nullptr);

    [[nodiscard]] bool isThere() const override { return m_isThere; }
    void ask(const Panel& panel, Answered answered) override;
    void takeAway() override;

private:
    Q_SLOT void takeResponse(uint code, const QVariantMap& results);

    void lookForPortal();
    void follow(const QString& request);
    void end(const Answer& answer);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_portal;
    bool m_isThere = false;
    int m_requests = 0;
    QString m_request;  // the panel that shows; empty without one
    Answered m_answered;
};
