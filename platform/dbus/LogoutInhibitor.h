// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <cstdint>
#include <optional>
#include <variant>

class QDBusMessage;
class QDBusPendingCallWatcher;

/// Keeps the desktop from ending the session without a question: by its portal, else by the session manager that has
/// org.gnome.SessionManager. It waits for no answer.
class LogoutInhibitor final : public QObject {
    Q_OBJECT

public:
    explicit LogoutInhibitor(const QDBusConnection& bus, QObject* parent = nullptr);
    /// Gives back what is held.
    ~LogoutInhibitor() override;

    /// None is for letting the session end.
    void setReason(const std::optional<QString>& reason);

private:
    struct PortalRequest {
        QString path;
    };
    struct ManagerCookie {
        std::uint32_t number;
    };

    void askPortal();
    void askManager();
    void ask(const QDBusMessage& call, void (LogoutInhibitor::*take)(const QDBusPendingCallWatcher& answer));
    void takePortalAnswer(const QDBusPendingCallWatcher& answer);
    void takeManagerAnswer(const QDBusPendingCallWatcher& answer);
    void settle();
    void giveBack();

    QDBusConnection m_bus;
    std::optional<QString> m_reason;
    bool m_isAsking = false;
    std::variant<std::monostate, PortalRequest, ManagerCookie> m_held;
};
