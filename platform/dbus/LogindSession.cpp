// SPDX-License-Identifier: MIT
#include "platform/dbus/LogindSession.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <memory>
#include <utility>

namespace {

// org.freedesktop.login1(5).
const QString service = QStringLiteral("org.freedesktop.login1");
const QString managerPath = QStringLiteral("/org/freedesktop/login1");
const QString managerInterface = QStringLiteral("org.freedesktop.login1.Manager");
const QString sessionInterface = QStringLiteral("org.freedesktop.login1.Session");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

QDBusMessage managerCall(const QString& method, const QVariantList& arguments) {
    auto call = QDBusMessage::createMethodCall(service, managerPath, managerInterface, method);
    call.setArguments(arguments);
    return call;
}

bool isNow(const QVariantMap& changed, const QString& property, bool value) {
    const auto found = changed.constFind(property);
    return found != changed.constEnd() && found->toBool() == value;
}

}  // namespace

LogindSession::LogindSession(SessionEvents::Happened happened, QObject* parent)
    : QObject(parent), m_happened(std::move(happened)) {}

// The session that a program belongs to is "auto"; where the manager of all users' services has started it, that is the
// one with the display. Managers that do not know this name know the environment's.
void LogindSession::begin(const QDBusConnection& bus) {
    m_bus = bus;
    const auto manager = [this](const QString& signal, const char* slot) {
        m_bus->connect({}, managerPath, managerInterface, signal, this, slot);
    };
    manager(QStringLiteral("PrepareForSleep"), SLOT(prepareForSleep(bool)));
    manager(QStringLiteral("PrepareForShutdown"), SLOT(prepareForShutdown(bool)));
    manager(QStringLiteral("SessionRemoved"), SLOT(removeSession(QString, QDBusObjectPath)));
    findSession(QStringLiteral("auto"), [this] {
        if (const auto name = qEnvironmentVariable("XDG_SESSION_ID"); !name.isEmpty())
            findSession(name, [] {});
    });
    delaySleep();
    delayEnd();
}

void LogindSession::findSession(const QString& name, std::function<void()> otherwise) {
    auto* const answer =
        new QDBusPendingCallWatcher(m_bus->asyncCall(managerCall(QStringLiteral("GetSession"), {name})), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, otherwise = std::move(otherwise)] {
        const QDBusPendingReply<QDBusObjectPath> path = *answer;
        answer->deleteLater();
        if (path.isError())
            otherwise();
        else
            follow(path.value().path());
    });
}

void LogindSession::follow(const QString& path) {
    m_session = path;
    m_bus->connect({}, path, sessionInterface, QStringLiteral("Lock"), this, SLOT(lockSession()));
    m_bus->connect({}, path, propertiesInterface, QStringLiteral("PropertiesChanged"), this,
                   SLOT(changeProperties(QString, QVariantMap, QStringList)));
}

void LogindSession::lockSession() {
    m_happened(SessionEvents::Event::left, nullptr);
}

/// Another session comes to the front, or the desktop's own lock screen has said that it shows.
void LogindSession::changeProperties(const QString& interface, const QVariantMap& changed, const QStringList&) {
    if (interface != sessionInterface)
        return;
    if (isNow(changed, QStringLiteral("Active"), false) || isNow(changed, QStringLiteral("LockedHint"), true))
        m_happened(SessionEvents::Event::left, nullptr);
}

void LogindSession::removeSession(const QString&, const QDBusObjectPath& path) {
    if (path.path() == m_session)
        m_happened(SessionEvents::Event::ended, nullptr);
}

void LogindSession::prepareForSleep(bool begins) {
    if (begins)
        m_happened(SessionEvents::Event::left, holdOf(m_sleep));
    else
        delaySleep();
}

void LogindSession::prepareForShutdown(bool begins) {
    if (begins)
        m_happened(SessionEvents::Event::ended, holdOf(m_end));
    else
        delayEnd();  // it was called off
}

SessionEvents::Hold LogindSession::holdOf(Lock& lock) {
    return lock.isValid() ? std::make_shared<Lock>(std::exchange(lock, {})) : nullptr;
}

void LogindSession::setEndDelayed(const std::optional<QString>& reason) {
    m_endReason = reason;
    if (reason)
        delayEnd();
    else
        m_end = {};
}

void LogindSession::delaySleep() {
    if (m_bus && !m_sleep.isValid())
        takeLock(QStringLiteral("sleep"), QStringLiteral("Kasa uykudan önce kilitlenir"),
                 [this](const Lock& lock) { m_sleep = lock; });
}

void LogindSession::delayEnd() {
    if (m_bus && m_endReason && !m_end.isValid())
        takeLock(QStringLiteral("shutdown"), *m_endReason, [this](const Lock& lock) {
            if (m_endReason)  // else it is not wanted any more
                m_end = lock;
        });
}

void LogindSession::takeLock(const QString& what, const QString& reason,
                             const std::function<void(const Lock& lock)>& taken) {
    const auto call =
        managerCall(QStringLiteral("Inhibit"), {what, QStringLiteral("Brenvik"), reason, QStringLiteral("delay")});
    auto* const answer = new QDBusPendingCallWatcher(m_bus->asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [answer, taken] {
        const QDBusPendingReply<Lock> lock = *answer;
        answer->deleteLater();
        if (!lock.isError())
            taken(lock.value());
    });
}
