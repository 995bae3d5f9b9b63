// SPDX-License-Identifier: MIT
#include "platform/qt/DesktopClipboard.h"

#include "platform/qt/QtClipboard.h"
#include "platform/x11/ClipboardChangeCount.h"

#include <QClipboard>
#include <QGuiApplication>

namespace {

QtClipboard::ChangeCounter countingSignals(QClipboard& clipboard) {
    const auto count = std::make_shared<std::int64_t>(0);
    QObject::connect(&clipboard, &QClipboard::dataChanged, &clipboard, [count] { ++*count; });
    return [count] { return *count; };
}

QtClipboard::ChangeCounter changeCounter(QClipboard& clipboard) {
    if (QGuiApplication::platformName() == QLatin1String("xcb"))
        if (std::shared_ptr<ClipboardChangeCount> count = ClipboardChangeCount::connected())
            return [count] { return count->value(); };
    return countingSignals(clipboard);
}

}  // namespace

std::unique_ptr<Clipboard> desktopClipboard() {
    auto& clipboard = *QGuiApplication::clipboard();
    return std::make_unique<QtClipboard>(clipboard, changeCounter(clipboard));
}
