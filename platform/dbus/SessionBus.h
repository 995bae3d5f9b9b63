// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <optional>

/// Keeps a session bus that does not answer out of the start. Qt asks the bus as it connects to the display, and waits
/// for as long as it takes: with a bus that hangs there would be no window.
class SessionBus {
public:
    /// Before Qt has asked anything. Returns within a moment.
    SessionBus();
    /// Once Qt has given up on the bus: the programs that we start ask for themselves.
    void takeBack() const;

private:
    std::optional<QByteArray> m_address;  // of a bus that hangs, empty where its place is the usual one
};
