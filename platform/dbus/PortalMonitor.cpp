// SPDX-License-Identifier: MIT
#include "platform/dbus/PortalMonitor.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>

#include <utility>

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString desktopPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString inhibitInterface = QStringLiteral("org.freedesktop.portal.Inhibit");

// Of a session's state.
constexpr unsigned int asksToEnd = 2;
constexpr unsigned int ends = 3;

// Each desktop has its own, and most have the first one too.
constexpr const char* screenSavers[] = {"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver",
                                        "org.cinnamon.ScreenSaver", "org.mate.ScreenSaver", "org.xfce.ScreenSaver"};

QDBusMessage inhibitCall(const QString& method, const QVariantList& arguments) {
    auto call = QDBusMessage::createMethodCall(service, desktopPath, inhibitInterface, method);
    call.setArguments(arguments);
    return call;
}

}  // namespace

PortalMonitor::PortalMonitor(SessionEvents::Happened happened, const QDBusConnection& bus, QObject* parent)
    : QObject(parent), m_happened(std::move(happened)), m_bus(bus) {
    for (const auto* screenSaver : screenSavers)
        m_bus.connect({}, {}, QLatin1String(screenSaver), QStringLiteral("ActiveChanged"), this,
                      SLOT(changeScreenSaver(bool)));
    m_bus.connect({}, desktopPath, inhibitInterface, QStringLiteral("StateChanged"), this,
                  SLOT(changeState(QDBusMessage)));
    createMonitor();
}

void PortalMonitor::createMonitor() {
    const QVariantMap options{{QStringLiteral("handle_token"), QStringLiteral("brenvik_monitor")},
                              {QStringLiteral("session_handle_token"), QStringLiteral("brenvik_session")}};
    m_bus.asyncCall(inhibitCall(QStringLiteral("CreateMonitor"), {QString(), options}));
}

void PortalMonitor::changeScreenSaver(bool isActive) {
    if (isActive)
        m_happened(SessionEvents::Event::left, nullptr);
}

// Each change names the whole state.
void PortalMonitor::changeState(const QDBusMessage& change) {
    if (change.signature() != QLatin1String("oa{sv}"))
        return;
    const auto monitor = change.arguments().at(0).value<QDBusObjectPath>();
    const auto state = qdbus_cast<QVariantMap>(change.arguments().at(1));
    const bool isActive = state.value(QStringLiteral("screensaver-active")).toBool();
    if (!std::exchange(m_isScreenSaverActive, isActive) && isActive)
        m_happened(SessionEvents::Event::left, nullptr);
    const auto sessionState = state.value(QStringLiteral("session-state")).toUInt();
    if (std::exchange(m_sessionState, sessionState) == sessionState)
        return;
    if (sessionState == asksToEnd)
        agreeToEnd(monitor);
    else if (sessionState == ends)
        m_happened(SessionEvents::Event::ended, nullptr);
}

/// A program that has something against it holds an inhibitor, and the desktop waits a second for this answer.
void PortalMonitor::agreeToEnd(const QDBusObjectPath& monitor) {
    m_bus.asyncCall(inhibitCall(QStringLiteral("QueryEndResponse"), {QVariant::fromValue(monitor)}));
}
