// SPDX-License-Identifier: MIT
#include "app/StartupFailures.h"

#include <QString>

#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

namespace {

constexpr const char* failureLine =
    "Brenvik açılamadı: ekrana bağlanılamıyor. Grafik oturumunda başlat; DISPLAY, WAYLAND_DISPLAY ve QT_QPA_PLATFORM "
    "değişkenlerine bak.\n";

struct Message {
    QtMsgType type;
    QString text;
};

QtMessageHandler usualHandler = nullptr;
std::vector<Message> waiting;

void handle(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtFatalMsg) {
        waiting.push_back({type, text});
        return;
    }
    (void)std::fputs(failureLine, stderr);
    std::_Exit(EXIT_FAILURE);  // nothing has been made yet that would have to be put away
}

}  // namespace

StartupFailures::StartupFailures() {
    usualHandler = qInstallMessageHandler(handle);
}

StartupFailures::~StartupFailures() {
    qInstallMessageHandler(usualHandler);
    for (const auto& message : std::exchange(waiting, {}))
        usualHandler(message.type, {}, message.text);
}
