// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/UserInput.h"

#include <QObject>

class XIdleTime;

/// Input in our own windows, and where an X server counts it, in all others.
class QtUserInput final : public QObject, public UserInput {
public:
    /// `session` is null without an X server; it outlives this.
    explicit QtUserInput(const XIdleTime* session, QObject* parent = nullptr);

    [[nodiscard]] std::chrono::nanoseconds idleTime() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const XIdleTime* m_session;
    std::chrono::steady_clock::time_point m_last;  // in our own windows
};
