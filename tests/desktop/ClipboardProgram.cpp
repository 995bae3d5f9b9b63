// SPDX-License-Identifier: MIT
#include "core/clipboard/ClipboardService.h"
#include "platform/qt/DesktopClipboard.h"
#include "platform/qt/QtScheduler.h"

#include <QClipboard>
#include <QEventLoop>
#include <QGuiApplication>
#include <QMimeData>
#include <QSocketNotifier>

#include <cstdlib>
#include <iostream>
#include <string>

// A program that does as its standard input says, a line a command, and answers each with one line. As "owner" it
// copies with the service on the real clipboard; as "manager" it is a clipboard manager that heeds no marker: it
// remembers each text, and puts the last one back when the clipboard is left empty. On its way out it waits for one
// more line, so that others can look at what it leaves.

namespace {

void answer(const std::string& text) {
    std::cout << text << std::endl;
}

class Owner {
public:
    Owner() {
        QObject::connect(qApp, &QCoreApplication::aboutToQuit, [this] { m_service.clearNow(); });
    }

    void perform(const std::string& command, const std::string& argument) {
        if (command == "clearAfter")
            m_service.setClearAfter(std::stod(argument));
        else if (command == "copySecret")
            m_service.copySecret(argument);
        else if (command == "copyPlain")
            m_service.copyPlain(argument);
        else if (command == "clearNow")
            m_service.clearNow();
        answer(std::to_string(m_service.secondsRemaining()));
    }

private:
    std::unique_ptr<Clipboard> m_clipboard = desktopClipboard();
    QtScheduler m_scheduler;
    ClipboardService m_service{*m_clipboard, m_scheduler};
};

class Manager {
public:
    Manager() {
        QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, [this] { look(); });
    }

    void perform(const std::string&, const std::string&) { answer(m_remembered); }

private:
    void look() {
        auto& clipboard = *QGuiApplication::clipboard();
        const auto* data = clipboard.mimeData();
        if (data && data->hasText())
            m_remembered = clipboard.text().toStdString();
        else if (!m_remembered.empty())
            clipboard.setText(QString::fromStdString(m_remembered));
    }

    std::string m_remembered;
};

template <class Role>
int serve() {
    Role role;
    QEventLoop leaving;
    QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        std::string line;
        if (!std::getline(std::cin, line))
            std::_Exit(1);  // the test is gone
        const auto blank = line.find(' ');
        if (line == "quit")
            QCoreApplication::quit();
        else if (line == "leave")
            leaving.quit();
        else
            role.perform(line.substr(0, blank), blank == std::string::npos ? "" : line.substr(blank + 1));
    });
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, [&] {
        answer("leaving");
        leaving.exec();
    });
    answer("ready");
    return QCoreApplication::exec();
}

}  // namespace

int main(int argumentCount, char** arguments) {
    QGuiApplication application(argumentCount, arguments);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const bool isManager = QCoreApplication::arguments().contains("manager");
    return isManager ? serve<Manager>() : serve<Owner>();
}
