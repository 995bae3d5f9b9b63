// SPDX-License-Identifier: MIT
#include "tests/desktop/x11/Window.h"

#include "platform/x11/XAnswer.h"

#include <QElapsedTimer>
#include <QThread>

#include <algorithm>

namespace {

constexpr int patience = 20'000;  // milliseconds

}  // namespace

WindowProgram::WindowProgram() {
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(WINDOW_PROGRAM, QStringList());
    m_process.waitForStarted(patience);
}

void WindowProgram::end() {
    m_process.closeWriteChannel();
    m_process.waitForFinished(patience);
}

xcb_window_t WindowProgram::perform(const QByteArray& command) {
    m_process.write(command + '\n');
    while (!m_process.canReadLine() && m_process.waitForReadyRead(patience)) {
    }
    return m_process.readLine().trimmed().toUInt();
}

void Window::setText(std::string_view property, std::string_view type, std::string_view value) {
    xcb_change_property(m_hands.connection(), XCB_PROP_MODE_REPLACE, m_window, atom(property), atom(type), 8,
                        static_cast<std::uint32_t>(value.size()), value.data());
    m_hands.roundTrip();
}

void Window::setNumbers(std::string_view property, std::string_view type, const std::vector<std::uint32_t>& values) {
    xcb_change_property(m_hands.connection(), XCB_PROP_MODE_REPLACE, m_window, atom(property), atom(type), 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
    m_hands.roundTrip();
}

void Window::ask(std::string_view request, const std::vector<std::uint32_t>& values) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = m_window;
    message.type = atom(request);
    std::ranges::copy(values, message.data.data32);
    xcb_send_event(m_hands.connection(), 0, m_hands.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    m_hands.roundTrip();
}

std::uint32_t Window::readNumber(std::string_view property) {
    const auto request =
        xcb_get_property(m_hands.connection(), 0, m_window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
    const XAnswer<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_hands.connection(), request, nullptr));
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) == 0)
        return 0;
    return *static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
}

xcb_atom_t Window::atom(std::string_view name) {
    const auto request = xcb_intern_atom(m_hands.connection(), 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XAnswer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_hands.connection(), request, nullptr));
    return reply->atom;
}

WindowManager::WindowManager(Hands& hands, const QString& program) {
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(program, QStringList());
    Window root(hands, hands.root());
    QElapsedTimer timer;
    timer.start();
    // What comes while a manager begins may lie there until the next event wakes it.
    while (!m_isRunning && timer.elapsed() < patience) {
        root.ask("_NET_NUMBER_OF_DESKTOPS", {desktops});
        QThread::msleep(10);
        m_isRunning = root.readNumber("_NET_NUMBER_OF_DESKTOPS") == desktops;
    }
}

WindowManager::~WindowManager() {
    m_process.terminate();
    m_process.waitForFinished(patience);
}
