// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <cstdint>

/// Where a message bus listens, and whether it is alive there.
namespace BusSocket {

/// A socket's path, or a name after a zero byte. Empty where the bus is none of this machine.
[[nodiscard]] QByteArray ofSession();
[[nodiscard]] QByteArray ofSystem();

/// A bus that hangs is connected to by the kernel in its place, and answers nothing.
enum class Life : std::uint8_t { answers, hangs, isNotThere };
/// Asks it for its first word. Waits for a moment where it hangs.
[[nodiscard]] Life lifeOf(const QByteArray& socket);

}  // namespace BusSocket
