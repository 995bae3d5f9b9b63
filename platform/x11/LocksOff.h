// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/XConnection.h"

#include <cstdint>

/// Caps Lock, and every other lock that changes what keys give, off for this object's life; NumLock does no harm and
/// stays. Latched modifiers (sticky keys) are let go for good: they were meant for one key.
class LocksOff {
public:
    /// The connection outlives the object.
    explicit LocksOff(XConnection& connection);
    LocksOff(const LocksOff&) = delete;
    LocksOff& operator=(const LocksOff&) = delete;

    /// Turns on again what was on.
    ~LocksOff();

private:
    XConnection& m_connection;
    std::uint8_t m_locks;  // bits of modifiers
};
