// SPDX-License-Identifier: MIT
#include "platform/qt/QtWorkspace.h"

#include <QDesktopServices>
#include <QString>
#include <QUrl>

void QtWorkspace::openURL(std::string_view url) {
    QDesktopServices::openUrl(
        QUrl(QString::fromUtf8(url.data(), static_cast<qsizetype>(url.size())), QUrl::StrictMode));
}
