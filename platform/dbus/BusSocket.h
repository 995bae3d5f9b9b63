// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// Where a message bus listens, and whether it is alive there.
namespace BusSocket {

/// A socket's path, or a name after a zero byte. Empty where the bus is none of this machine.
[[nodiscard]] QByteArray ofSystem();

/// Whether a bus answers there. Waits for a moment, where it hangs.
[[nodiscard]] bool answers(const QByteArray& socket);

}  // namespace BusSocket
