// SPDX-License-Identifier: MIT
#include "platform/dbus/PortalFileChooser.h"

#include "platform/dbus/FileURI.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFile>
#include <QStringList>

#include <utility>

// The wire's "a(sa(us))": a name, and patterns, each with its kind.
struct PortalPattern {
    uint kind;
    QString pattern;
};
struct PortalFilter {
    QString name;
    QList<PortalPattern> patterns;
};
Q_DECLARE_METATYPE(PortalPattern)
Q_DECLARE_METATYPE(PortalFilter)

QDBusArgument& operator<<(QDBusArgument& argument, const PortalPattern& pattern) {
    argument.beginStructure();
    argument << pattern.kind << pattern.pattern;
    argument.endStructure();
    return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalPattern& pattern) {
    argument.beginStructure();
    argument >> pattern.kind >> pattern.pattern;
    argument.endStructure();
    return argument;
}
QDBusArgument& operator<<(QDBusArgument& argument, const PortalFilter& filter) {
    argument.beginStructure();
    argument << filter.name << filter.patterns;
    argument.endStructure();
    return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalFilter& filter) {
    argument.beginStructure();
    argument >> filter.name >> filter.patterns;
    argument.endStructure();
    return argument;
}

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString desktopPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString chooserInterface = QStringLiteral("org.freedesktop.portal.FileChooser");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");

constexpr uint answered = 0;  // of a response; all else means that the panel was left or closed

constexpr uint glob = 0;  // the kind of a pattern

void registerTypes() {
    static const bool areRegistered = [] {
        qDBusRegisterMetaType<PortalPattern>();
        qDBusRegisterMetaType<QList<PortalPattern>>();
        qDBusRegisterMetaType<PortalFilter>();
        qDBusRegisterMetaType<QList<PortalFilter>>();
        return true;
    }();
    static_cast<void>(areRegistered);
}

QString qString(const std::string& text) {
    return QString::fromStdString(text);
}

QList<PortalFilter> filtersOf(const FileChooser::Panel& panel) {
    QList<PortalFilter> filters;
    for (const auto& filter : panel.filters) {
        PortalFilter wanted{qString(filter.name), {}};
        for (const auto& pattern : filter.patterns)
            wanted.patterns.append({glob, qString(pattern)});
        filters.append(wanted);
    }
    return filters;
}

/// A path as the portal takes it: bytes with a zero at their end.
QByteArray pathBytes(const std::filesystem::path& path) {
    return {path.c_str(), static_cast<qsizetype>(path.native().size()) + 1};
}

QVariantMap optionsOf(const FileChooser::Panel& panel, const QString& token) {
    QVariantMap options{{QStringLiteral("handle_token"), token}, {QStringLiteral("modal"), true}};
    if (!panel.prompt.empty())
        options.insert(QStringLiteral("accept_label"), qString(panel.prompt));
    if (!panel.filters.empty())
        options.insert(QStringLiteral("filters"), QVariant::fromValue(filtersOf(panel)));
    if (!panel.folder.empty())
        options.insert(QStringLiteral("current_folder"), pathBytes(panel.folder));
    if (panel.name)
        options.insert(QStringLiteral("current_name"), qString(*panel.name));
    return options;
}

QString windowOf(const FileChooser::Panel& panel) {
    return panel.window != 0 ? QStringLiteral("x11:") + QString::number(panel.window, 16) : QString();
}

}  // namespace

PortalFileChooser::PortalFileChooser(QObject* parent)
    : QObject(parent),
      m_bus(QDBusConnection::sessionBus()),
      m_portal(service, m_bus, QDBusServiceWatcher::WatchForUnregistration) {
    if (!m_bus.isConnected())
        return;
    registerTypes();
    connect(&m_portal, &QDBusServiceWatcher::serviceUnregistered, this, [this] { end({}); });
    lookForPortal();
}

void PortalFileChooser::lookForPortal() {
    auto question = QDBusMessage::createMethodCall(
        service, desktopPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << chooserInterface << QStringLiteral("version");
    auto* const answer = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        m_isThere = !answer->isError();
        answer->deleteLater();
    });
}

// The path of a request follows from our name and a token, and is listened to before the request is made: its answer
// could come first. Older portals make up a path of their own.
void PortalFileChooser::ask(const Panel& panel, Answered answered) {
    takeAway();
    m_answered = std::move(answered);
    const auto token = QStringLiteral("brenvik%1").arg(++m_requests);
    const auto sender = m_bus.baseService().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
    follow(desktopPath + QStringLiteral("/request/") + sender + QLatin1Char('/') + token);
    auto call = QDBusMessage::createMethodCall(service, desktopPath, chooserInterface,
                                               panel.name ? QStringLiteral("SaveFile") : QStringLiteral("OpenFile"));
    call << windowOf(panel) << qString(panel.title) << optionsOf(panel, token);
    auto* const reply = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply, request = m_request] {
        const QDBusPendingReply<QDBusObjectPath> handle = *reply;
        reply->deleteLater();
        if (request != m_request)
            return;
        if (handle.isError())
            end({});
        else if (handle.value().path() != m_request)
            follow(handle.value().path());
    });
}

void PortalFileChooser::takeAway() {
    m_answered = nullptr;
    if (m_request.isEmpty())
        return;
    m_bus.asyncCall(QDBusMessage::createMethodCall(service, m_request, requestInterface, QStringLiteral("Close")));
    follow({});
}

void PortalFileChooser::follow(const QString& request) {
    const auto response = QStringLiteral("Response");
    if (!m_request.isEmpty())
        m_bus.disconnect(service, m_request, requestInterface, response, this, SLOT(takeResponse(uint, QVariantMap)));
    m_request = request;
    if (!m_request.isEmpty())
        m_bus.connect(service, m_request, requestInterface, response, this, SLOT(takeResponse(uint, QVariantMap)));
}

void PortalFileChooser::takeResponse(uint code, const QVariantMap& results) {
    const auto uris = results.value(QStringLiteral("uris")).toStringList();
    if (code != answered)
        return end({Outcome::cancelled, {}});
    const auto file = uris.isEmpty() ? std::nullopt : FileURI::path(uris.constFirst().toStdString());
    end(file ? Answer{Outcome::chosen, *file} : Answer());
}

void PortalFileChooser::end(const Answer& answer) {
    follow({});
    if (const auto answered = std::exchange(m_answered, nullptr))
        answered(answer);
}
