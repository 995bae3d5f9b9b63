// SPDX-License-Identifier: MIT
#include "platform/dbus/SessionBus.h"

#include "platform/dbus/BusSocket.h"

#include <QtGlobal>

namespace {

constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";

}  // namespace

// One that cannot be reached at all does not hang either: it is left to those who look for it.
SessionBus::SessionBus() {
    if (BusSocket::lifeOf(BusSocket::ofSession()) != BusSocket::Life::hangs)
        return;
    m_address = qgetenv(variable);
    qputenv(variable, "unix:path=/dev/null");  // where nothing listens
}

void SessionBus::takeBack() const {
    if (!m_address)
        return;
    if (m_address->isEmpty())
        qunsetenv(variable);
    else
        qputenv(variable, *m_address);
}
