// SPDX-License-Identifier: MIT
#include "platform/dbus/ApplicationService.h"

#include "core/primitives/Overloaded.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

const QString name = QStringLiteral("org.brenvik.Brenvik");
const QString path = QStringLiteral("/org/brenvik/Brenvik");
const QString interface = QStringLiteral("org.freedesktop.Application");
const QString startupIDKey = QStringLiteral("desktop-startup-id");
const QString tokenKey = QStringLiteral("activation-token");  // the same, of desktops that came later

// Of org.freedesktop.DBus.RequestName (D-Bus Specification).
constexpr uint doNotQueue = 4;
constexpr uint exists = 3;

// Milliseconds.
constexpr int patienceWithBus = 1000;
constexpr int patienceWithProgram = 5000;  // it answers before it does anything, but may be in the middle of something
constexpr int mostAttempts = 3;

// The actions of the desktop file have the same names.
constexpr std::array<std::pair<ApplicationWish::Action, const char*>, 4> actions{{
    {ApplicationWish::Action::lock, "lock"},
    {ApplicationWish::Action::save, "save"},
    {ApplicationWish::Action::generate, "generate"},
    {ApplicationWish::Action::autoType, "auto-type"},
}};

QString nameOf(ApplicationWish::Action action) {
    return QLatin1String(std::ranges::find(actions, action, [](const auto& row) { return row.first; })->second);
}

std::string startupIDIn(const QVariantMap& platformData) {
    for (const auto& key : {tokenKey, startupIDKey})
        if (const auto id = platformData.value(key).toString(); !id.isEmpty())
            return id.toStdString();
    return {};
}

QVariantMap platformDataOf(const ApplicationWish& wish) {
    if (wish.startupID.empty())
        return {};
    const auto id = QString::fromStdString(wish.startupID);
    return {{startupIDKey, id}, {tokenKey, id}};
}

QDBusMessage callFor(const ApplicationWish& wish) {
    const auto call = [](const char* method) {
        return QDBusMessage::createMethodCall(name, path, interface, QLatin1String(method));
    };
    QDBusMessage message = std::visit(Overloaded{
                                          [&](const ApplicationWish::Activate&) { return call("Activate"); },
                                          [&](const ApplicationWish::Open& open) {
                                              QStringList uris;
                                              for (const auto& uri : open.uris)
                                                  uris += QString::fromStdString(uri);
                                              return call("Open") << uris;
                                          },
                                          [&](const ApplicationWish::Action& action) {
                                              return call("ActivateAction") << nameOf(action) << QVariantList();
                                          },
                                      },
                                      wish.what);
    message.setAutoStartService(false);
    return message << platformDataOf(wish);
}

}  // namespace

// The object is there before the name is: who waits for the name asks at once.
ApplicationService::ApplicationService(QObject* parent) : QObject(parent), m_bus(QDBusConnection::sessionBus()) {
    if (!m_bus.isConnected())
        return;
    m_bus.registerObject(path, this, QDBusConnection::ExportScriptableSlots);
    askForName();
}

void ApplicationService::askForName() {
    auto request =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    m_name = m_bus.asyncCall(request << name << doNotQueue, patienceWithBus);
}

bool ApplicationService::isTaken() {
    if (!m_bus.isConnected())
        return false;
    m_name.waitForFinished();
    return m_name.isValid() && m_name.value() == exists;
}

// The other may be about to end: its name is free in a moment.
bool ApplicationService::handOver(const ApplicationWish& wish) {
    for (int attempt = 0; attempt < mostAttempts && isTaken(); ++attempt) {
        const auto answer = m_bus.call(callFor(wish), QDBus::Block, patienceWithProgram);
        if (answer.type() == QDBusMessage::ReplyMessage)
            return true;
        askForName();
    }
    return false;
}

void ApplicationService::Activate(const QVariantMap& platformData) {
    announce({ApplicationWish::Activate(), startupIDIn(platformData)});
}

void ApplicationService::Open(const QStringList& uris, const QVariantMap& platformData) {
    ApplicationWish::Open open;
    for (const auto& uri : uris)
        open.uris.push_back(uri.toStdString());
    announce({std::move(open), startupIDIn(platformData)});
}

void ApplicationService::ActivateAction(const QString& action, const QVariantList&, const QVariantMap& platformData) {
    const auto* const row = std::ranges::find_if(actions, [&](const auto& each) { return action == each.second; });
    if (row == actions.end())
        return sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such action: ") + action);
    announce({row->first, startupIDIn(platformData)});
}

void ApplicationService::announce(ApplicationWish wish) {
    QMetaObject::invokeMethod(
        this, [this, wish = std::move(wish)] { emit wished(wish); }, Qt::QueuedConnection);
}
