// SPDX-License-Identifier: MIT
#include "platform/qt/DesktopTraces.h"

#include "platform/qt/SecretMimeData.h"
#include "platform/x11/XBuffers.h"

#include <QClipboard>
#include <QGuiApplication>

#include <dlfcn.h>

#include <string>

namespace {

// libdbus keeps up to five messages for the next ones, with what was in them, unless they have grown beyond 10 KiB.
constexpr int keptMessages = 5;
constexpr std::size_t tooLongToKeep = 16 * 1024;
constexpr int signalMessage = 4;  // DBUS_MESSAGE_TYPE_SIGNAL
constexpr int stringArgument = 's';
constexpr int noArgument = 0;

/// A function of the library that Qt speaks to assistive programs with; null where it came without.
template <class Function>
Function* busFunction(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_DEFAULT, name));
}

/// Takes each message that is kept and makes it too long to be kept again. None is sent.
void dropKeptMessages() {
    auto* const make = busFunction<void*(int)>("dbus_message_new");
    auto* const append = busFunction<unsigned(void*, int, ...)>("dbus_message_append_args");
    auto* const release = busFunction<void(void*)>("dbus_message_unref");
    if (!make || !append || !release)
        return;
    const std::string filler(tooLongToKeep, ' ');
    const char* const text = filler.c_str();
    for (int i = 0; i < keptMessages; ++i)
        if (void* const message = make(signalMessage)) {
            append(message, stringArgument, &text, noArgument);
            release(message);
        }
}

}  // namespace

void DesktopTraces::dropSelection() {
    auto& clipboard = *QGuiApplication::clipboard();
    if (clipboard.supportsSelection() && clipboard.ownsSelection())
        clipboard.setMimeData(new SecretMimeData({}, {}), QClipboard::Selection);
}

void DesktopTraces::wipe() {
    dropKeptMessages();
    if (const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>())
        XBuffers::overwrite(x11->connection());
}
