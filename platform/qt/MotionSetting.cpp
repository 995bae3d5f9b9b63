// SPDX-License-Identifier: MIT
#include "platform/qt/MotionSetting.h"

#include "platform/x11/XSettings.h"

#include <QSettings>
#include <QStandardPaths>

namespace {

bool isReducedByKDE() {
    const auto file = QStandardPaths::locate(QStandardPaths::GenericConfigLocation, QStringLiteral("kdeglobals"));
    if (file.isEmpty())
        return false;
    bool isNumber = false;
    const double factor =
        QSettings(file, QSettings::IniFormat).value(QStringLiteral("KDE/AnimationDurationFactor")).toDouble(&isNumber);
    return isNumber && factor <= 0;
}

}  // namespace

bool MotionSetting::isReduced() {
    return XSettings::integer("Gtk/EnableAnimations") == 0 || isReducedByKDE();
}
