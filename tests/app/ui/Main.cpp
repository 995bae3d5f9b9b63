// SPDX-License-Identifier: MIT
#include "app/ui/ApplicationStyle.h"
#include "app/ui/FontRegistrar.h"

#include <gtest/gtest.h>

#include <QApplication>

// Widgets need an application, here one without a display.
int main(int argumentCount, char* arguments[]) {
    testing::InitGoogleTest(&argumentCount, arguments);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argumentCount, arguments);
    FontRegistrar::registerBundledFonts(QStringLiteral(BRENVIK_RESOURCES));
    ApplicationStyle::apply(application);
    return RUN_ALL_TESTS();
}
