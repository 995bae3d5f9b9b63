// SPDX-License-Identifier: MIT
#include "platform/dbus/LogoutInhibitor.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace {

// Both interfaces give a log-out this bit.
constexpr unsigned int logout = 1;

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString inhibitInterface = QStringLiteral("org.freedesktop.portal.Inhibit");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");

const QString manager = QStringLiteral("org.gnome.SessionManager");
const QString managerPath = QStringLiteral("/org/gnome/SessionManager");
const QString application = QStringLiteral("org.brenvik.Brenvik");

QDBusMessage callOf(const QString& service, const QString& path, const QString& interface, const QString& method,
                    const QVariantList& arguments) {
    auto call = QDBusMessage::createMethodCall(service, path, interface, method);
    call.setArguments(arguments);
    return call;
}

}  // namespace

LogoutInhibitor::LogoutInhibitor(const QDBusConnection& bus, QObject* parent) : QObject(parent), m_bus(bus) {}

LogoutInhibitor::~LogoutInhibitor() {
    giveBack();
}

void LogoutInhibitor::setReason(const std::optional<QString>& reason) {
    m_reason = reason;
    settle();
}

/// Brings what is held to what is wanted, once there is no answer to come.
void LogoutInhibitor::settle() {
    const bool holds = !std::holds_alternative<std::monostate>(m_held);
    if (m_isAsking || holds == m_reason.has_value())
        return;
    if (holds)
        giveBack();
    else
        askPortal();
}

void LogoutInhibitor::askPortal() {
    const QVariantMap options{{QStringLiteral("reason"), *m_reason},
                              {QStringLiteral("handle_token"), QStringLiteral("brenvik_logout")}};
    ask(callOf(portal, portalPath, inhibitInterface, QStringLiteral("Inhibit"), {QString(), logout, options}),
        &LogoutInhibitor::takePortalAnswer);
}

void LogoutInhibitor::takePortalAnswer(const QDBusPendingCallWatcher& answer) {
    const QDBusPendingReply<QDBusObjectPath> request = answer;
    if (!request.isError())
        m_held = PortalRequest{request.value().path()};
    else if (m_reason)
        return askManager();
    settle();
}

void LogoutInhibitor::askManager() {
    const unsigned int noWindow = 0;
    ask(callOf(manager, managerPath, manager, QStringLiteral("Inhibit"), {application, noWindow, *m_reason, logout}),
        &LogoutInhibitor::takeManagerAnswer);
}

void LogoutInhibitor::takeManagerAnswer(const QDBusPendingCallWatcher& answer) {
    const QDBusPendingReply<uint> cookie = answer;
    if (cookie.isError())
        return;  // this desktop asks no one; the next change tries again
    m_held = ManagerCookie{cookie.value()};
    settle();
}

void LogoutInhibitor::ask(const QDBusMessage& call,
                          void (LogoutInhibitor::*take)(const QDBusPendingCallWatcher& answer)) {
    m_isAsking = true;
    auto* const answer = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, take] {
        m_isAsking = false;
        answer->deleteLater();
        (this->*take)(*answer);
    });
}

void LogoutInhibitor::giveBack() {
    const auto held = std::exchange(m_held, {});
    if (const auto* request = std::get_if<PortalRequest>(&held))
        m_bus.asyncCall(callOf(portal, request->path, requestInterface, QStringLiteral("Close"), {}));
    else if (const auto* cookie = std::get_if<ManagerCookie>(&held))
        m_bus.asyncCall(
            callOf(manager, managerPath, manager, QStringLiteral("Uninhibit"), {QVariant::fromValue(cookie->number)}));
}
