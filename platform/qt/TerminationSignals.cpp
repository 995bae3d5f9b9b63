// SPDX-License-Identifier: MIT
#include "platform/qt/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace {

// A handler may do next to nothing: it writes a byte that the event loop reads.
int ends[2] = {-1, -1};  // of the handler and of the loop

void wakeTheLoop(int) {
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(ends[0], &byte, 1);
}

void handleWith(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaction(signal, &action, nullptr);
}

}  // namespace

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent), m_notifier(nullptr) {
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends) != 0)
        return;  // the signals then end the process as they always did
    m_notifier = new QSocketNotifier(ends[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &TerminationSignals::quit);

    handleWith(wakeTheLoop);
}

TerminationSignals::~TerminationSignals() {
    handleWith(SIG_DFL);
    for (int& end : ends)
        ::close(std::exchange(end, -1));
}

void TerminationSignals::quit() {
    char bytes[16];
    while (::read(ends[1], bytes, sizeof(bytes)) > 0) {
    }
    QCoreApplication::exit();
}
