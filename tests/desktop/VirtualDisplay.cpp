// SPDX-License-Identifier: MIT
#include "tests/desktop/VirtualDisplay.h"

VirtualDisplay::VirtualDisplay(const QStringList& furtherOptions) {
    // Without -noreset the server forgets everything when its last client leaves.
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.start(
        "Xvfb",
        QStringList{"-displayfd", "1", "-noreset", "-nolisten", "tcp", "-screen", "0", "1280x800x24"} + furtherOptions);
    QByteArray number;
    while (!number.endsWith('\n') && m_server.waitForReadyRead(30'000))
        number += m_server.readAllStandardOutput();
    if (number.endsWith('\n'))
        m_name = ':' + QString::fromLatin1(number.trimmed());
}

VirtualDisplay::~VirtualDisplay() {
    stop();
}

void VirtualDisplay::stop() {
    m_server.terminate();
    m_server.waitForFinished(10'000);
}

QProcessEnvironment VirtualDisplay::environment() const {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", m_name);
    environment.insert("QT_QPA_PLATFORM", "xcb");
    environment.insert("LANG", "C.UTF-8");
    environment.remove("WAYLAND_DISPLAY");
    return environment;
}
