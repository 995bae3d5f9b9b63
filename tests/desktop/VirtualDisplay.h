// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// An X server without a screen, for one test. It is there when the constructor returns, and goes with the object.
class VirtualDisplay {
public:
    explicit VirtualDisplay(const QStringList& furtherOptions = {});
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;
    ~VirtualDisplay();

    /// Whether it started.
    [[nodiscard]] bool isRunning() const { return !m_name.isEmpty(); }

    /// As DISPLAY has it.
    [[nodiscard]] const QString& name() const { return m_name; }

    /// Ends it, as a crash of the server does: every program loses its connection.
    void stop();

    /// The environment of a program that is to run on this display.
    [[nodiscard]] QProcessEnvironment environment() const;

private:
    QProcess m_server;
    QString m_name;  // ":99"
};
