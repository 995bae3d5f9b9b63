// SPDX-License-Identifier: MIT
#include "platform/dbus/DesktopSession.h"

#include "platform/dbus/BusSocket.h"

#include <QMetaObject>

#include <system_error>
#include <utility>

DesktopSession::DesktopSession(QObject* parent)
    : QObject(parent), m_logind([this](Event event, Hold hold) { report(event, std::move(hold)); }) {}

DesktopSession::~DesktopSession() = default;

void DesktopSession::observe(Happened happened) {
    m_happened = std::move(happened);
    if (const auto bus = QDBusConnection::sessionBus(); bus.isConnected()) {
        m_monitor.emplace([this](Event event, Hold hold) { report(event, std::move(hold)); }, bus);
        m_logout.emplace(bus);
    }
    connectToSystem();
}

/// Qt waits as it connects to a bus, and lets all that it does on others wait too. So it connects only to a bus that
/// has just answered.
void DesktopSession::connectToSystem() {
    try {
        m_systemBus = std::jthread([this] {
            if (BusSocket::lifeOf(BusSocket::ofSystem()) != BusSocket::Life::answers)
                return;
            QMetaObject::invokeMethod(
                this,
                [this] {
                    if (const auto bus = QDBusConnection::systemBus(); bus.isConnected())
                        m_logind.begin(bus);
                },
                Qt::QueuedConnection);
        });
    } catch (const std::system_error&) {
        // Without a thread there is no system bus.
    }
}

void DesktopSession::report(Event event, Hold hold) {
    if (m_happened)
        m_happened(event, std::move(hold));
}

void DesktopSession::inhibit(std::string_view reason) {
    const auto text = QString::fromUtf8(reason.data(), static_cast<qsizetype>(reason.size()));
    m_logind.setEndDelayed(text);
    if (m_logout)
        m_logout->setReason(text);
}

void DesktopSession::release() {
    m_logind.setEndDelayed(std::nullopt);
    if (m_logout)
        m_logout->setReason(std::nullopt);
}
