// SPDX-License-Identifier: MIT
#include "core/autotype/AutoTypeService.h"
#include "platform/qt/QtScheduler.h"
#include "platform/x11/HotKeyState.h"
#include "platform/x11/XApplications.h"
#include "platform/x11/XConnection.h"
#include "platform/x11/XKeyboardEvents.h"
#include "platform/x11/XKeyboardLayout.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSocketNotifier>

#include <iostream>
#include <memory>
#include <string>

// The service that types, on a real display and without a window: it types what its standard input says into the window
// in front. Each line is a job, as an object with "sequence", "username" and "password"; the answer is a line with the
// "failure", which is null where there was none, and the "seconds" that it took.

namespace {

KdbxEntry entryOf(const QJsonObject& job) {
    KdbxEntry entry;
    entry.username = job["username"].toString().toStdString();
    entry.password = SecureString(job["password"].toString().toStdString());
    return entry;
}

class Typist {
public:
    explicit Typist(XConnection& connection)
        : m_layout(connection),
          m_keyboard({.connection = connection, .layout = m_layout, .hotKey = m_hotKey}),
          m_applications(connection),
          m_service(
              {.keyboard = m_keyboard, .layout = m_layout, .applications = m_applications, .scheduler = m_scheduler}) {
        m_service.startTrackingFrontmostApplication();
    }

    void type(const QJsonObject& job) {
        m_service.captureTarget();
        m_clock.start();
        m_service.perform(job["sequence"].toString().toStdString(), entryOf(job),
                          [this](const std::optional<std::string>& failure) { answer(failure); });
    }

private:
    void answer(const std::optional<std::string>& failure) const {
        const QJsonObject answer{
            {"failure", failure ? QJsonValue(QString::fromStdString(*failure)) : QJsonValue()},
            {"seconds", static_cast<double>(m_clock.nsecsElapsed()) / 1e9},
        };
        std::cout << QJsonDocument(answer).toJson(QJsonDocument::Compact).toStdString() << std::endl;
    }

    HotKeyState m_hotKey;
    QtScheduler m_scheduler;
    XKeyboardLayout m_layout;
    XKeyboardEvents m_keyboard;
    XApplications m_applications;
    AutoTypeService m_service;
    QElapsedTimer m_clock;
};

}  // namespace

int main(int argumentCount, char* arguments[]) {
    const QCoreApplication application(argumentCount, arguments);
    const auto connection = XConnection::connected();
    if (!connection) {
        std::cerr << "There is no display.\n";
        return 1;
    }
    Typist typist(*connection);
    QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &input, [&] {
        std::string line;
        if (std::getline(std::cin, line))
            typist.type(QJsonDocument::fromJson(QByteArray::fromStdString(line)).object());
        else
            QCoreApplication::quit();
    });
    return QCoreApplication::exec();
}
