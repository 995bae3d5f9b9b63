// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/SessionEvents.h"
#include "core/platform/SessionInhibitor.h"
#include "platform/dbus/LogindSession.h"
#include "platform/dbus/LogoutInhibitor.h"
#include "platform/dbus/PortalMonitor.h"

#include <QObject>

#include <optional>
#include <thread>

/// The user's session, by all that the two buses say of it. A bus that is missing or hangs says nothing, and nothing
/// waits for it.
class DesktopSession final : public QObject, public SessionEvents, public SessionInhibitor {
public:
    explicit DesktopSession(QObject* parent = nullptr);
    ~DesktopSession() override;

    void observe(Happened happened) override;
    void inhibit(std::string_view reason) override;
    void release() override;

private:
    void report(Event event, Hold hold);
    void connectToSystem();

    Happened m_happened;
    LogindSession m_logind;
    std::optional<PortalMonitor> m_monitor;  // these two with a session bus
    std::optional<LogoutInhibitor> m_logout;
    std::jthread m_systemBus;  // finds out whether that bus answers
};
