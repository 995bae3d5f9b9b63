// SPDX-License-Identifier: MIT
#include "platform/dbus/BusSocket.h"

#include <QList>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

namespace {

constexpr int patience = 1000;  // milliseconds; a bus answers within one, unless all wait at a log-in

/// D-Bus Specification, "Server Addresses".
QByteArray socketOf(const QByteArray& address) {
    const auto first = address.split(';').constFirst();
    if (!first.startsWith("unix:"))
        return {};
    for (const auto& part : first.mid(5).split(',')) {
        const auto value = QByteArray::fromPercentEncoding(part.mid(part.indexOf('=') + 1));
        if (part.startsWith("path="))
            return value;
        if (part.startsWith("abstract="))
            return '\0' + value;
    }
    return {};
}

class Socket {
public:
    Socket() : m_descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
    ~Socket() {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    /// As `connect`, without waiting.
    [[nodiscard]] bool connect(const QByteArray& name) const {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (name.isEmpty() || static_cast<std::size_t>(name.size()) >= sizeof(address.sun_path))
            return false;
        std::copy(name.begin(), name.end(), address.sun_path);
        const bool isNamed = name.front() != '\0';
        const auto size = offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(name.size()) + (isNamed ? 1 : 0);
        return ::connect(m_descriptor, reinterpret_cast<const sockaddr*>(&address), static_cast<socklen_t>(size)) == 0;
    }

    /// Whether anything comes, be it the end of the connection, after these bytes were sent.
    [[nodiscard]] bool isAnswered(const QByteArray& bytes) const {
        if (::send(m_descriptor, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL) < 0)
            return errno != EAGAIN;
        pollfd events{m_descriptor, POLLIN, 0};
        return ::poll(&events, 1, patience) != 0;
    }

private:
    int m_descriptor;
};

}  // namespace

QByteArray BusSocket::ofSession() {
    if (const auto address = qgetenv("DBUS_SESSION_BUS_ADDRESS"); !address.isEmpty())
        return socketOf(address);
    const auto folder = qgetenv("XDG_RUNTIME_DIR");
    return folder.isEmpty() ? QByteArray() : folder + "/bus";
}

QByteArray BusSocket::ofSystem() {
    const auto address = qgetenv("DBUS_SYSTEM_BUS_ADDRESS");
    return address.isEmpty() ? QByteArrayLiteral("/run/dbus/system_bus_socket") : socketOf(address);
}

BusSocket::Life BusSocket::lifeOf(const QByteArray& socket) {
    const Socket connection;
    if (!connection.connect(socket))
        return errno == EAGAIN ? Life::hangs : Life::isNotThere;  // so many wait there that no more are let in
    const auto user = QByteArray::number(::getuid()).toHex();
    return connection.isAnswered('\0' + QByteArray("AUTH EXTERNAL ") + user + "\r\n") ? Life::answers : Life::hangs;
}
