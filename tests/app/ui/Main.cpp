// SPDX-License-Identifier: MIT
#include "app/ui/components/ApplicationStyle.h"
#include "app/ui/theme/FontRegistrar.h"

#include <gtest/gtest.h>

#include <QApplication>

// Widgets need an application, here one without a display: with a screen that has room for the window, and one that
// has not.
int main(int argumentCount, char* arguments[]) {
    testing::InitGoogleTest(&argumentCount, arguments);
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" BRENVIK_SOURCES "/tests/app/ui/Screens.json");
    QApplication application(argumentCount, arguments);
    FontRegistrar::registerBundledFonts(QStringLiteral(BRENVIK_RESOURCES));
    ApplicationStyle::apply(application);
    return RUN_ALL_TESTS();
}
