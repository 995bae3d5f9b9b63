// SPDX-License-Identifier: MIT
#include "core/autotype/AutoTypeService.h"
#include "platform/qt/QtScheduler.h"
#include "platform/x11/HotKeyState.h"
#include "platform/x11/XAnswer.h"
#include "platform/x11/XApplications.h"
#include "platform/x11/XConnection.h"
#include "platform/x11/XKeyboardEvents.h"
#include "platform/x11/XKeyboardLayout.h"
#include "platform/x11/Xkb.h"
#include "tests/support/Description.h"

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
// "failure", which is null where there was none, and the "seconds" that it took. A job with a "group" selects that one
// of the layouts instead, as its key would, and the answer is the group that is active then.

namespace {

KdbxEntry entryOf(const QJsonObject& job) {
    KdbxEntry entry;
    entry.username = job["username"].toString().toStdString();
    entry.password = SecureString(job["password"].toString().toStdString());
    return entry;
}

int selectGroup(XConnection& connection, int group) {
    auto* const xcb = connection.get();
    xcb_xkb_latch_lock_state(xcb, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, static_cast<std::uint8_t>(group), 0, 0, 0);
    const XAnswer<xcb_xkb_get_state_reply_t> state(
        xcb_xkb_get_state_reply(xcb, xcb_xkb_get_state(xcb, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    return state ? state->group : -1;
}

class Typist {
public:
    explicit Typist(XConnection& connection)
        : m_connection(connection),
          m_layout(connection),
          m_keyboard({.connection = connection, .layout = m_layout, .hotKey = m_hotKey}),
          m_applications(connection),
          m_service(
              {.keyboard = m_keyboard, .layout = m_layout, .applications = m_applications, .scheduler = m_scheduler}) {
        m_service.startTrackingFrontmostApplication();
    }

    void perform(const QJsonObject& job) {
        if (job.contains("group"))
            answer({{"group", selectGroup(m_connection, job["group"].toInt())}});
        else
            type(job);
    }

private:
    void type(const QJsonObject& job) {
        m_service.captureTarget();
        m_clock.start();
        m_service.perform(job["sequence"].toString().toStdString(), entryOf(job),
                          [this](const std::exception_ptr& ended) {
                              const auto failure = descriptionOf(ended);
                              answer({{"failure", failure ? QString::fromStdString(*failure) : QJsonValue()},
                                      {"seconds", static_cast<double>(m_clock.nsecsElapsed()) / 1e9}});
                          });
    }

    static void answer(const QJsonObject& answer) {
        std::cout << QJsonDocument(answer).toJson(QJsonDocument::Compact).toStdString() << std::endl;
    }

    XConnection& m_connection;
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
            typist.perform(QJsonDocument::fromJson(QByteArray::fromStdString(line)).object());
        else
            QCoreApplication::quit();
    });
    return QCoreApplication::exec();
}
