// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/XConnection.h"

#include <chrono>
#include <optional>

/// The time since the last input in the whole X session, which the MIT-SCREEN-SAVER extension counts.
class XIdleTime final {
public:
    /// The connection outlives it.
    explicit XIdleTime(XConnection& connection);

    /// None without the extension, and once the connection is broken.
    [[nodiscard]] std::optional<std::chrono::milliseconds> get() const;

private:
    XConnection& m_connection;
    bool m_isKnown;
};
