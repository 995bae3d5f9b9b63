// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QString>

/// An X server without a screen, for one test. It is there when the constructor returns, and goes with the object.
class VirtualDisplay {
public:
    VirtualDisplay();
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;
    ~VirtualDisplay();

    /// Whether it started.
    [[nodiscard]] bool isRunning() const { return !m_name.isEmpty(); }

    /// Ends it, as a crash of the server does: every program loses its connection.
    void stop();

    /// The environment of a program that is to run on this display.
    [[nodiscard]] QProcessEnvironment environment() const;

private:
    QProcess m_server;
    QString m_name;  // ":99"
};
