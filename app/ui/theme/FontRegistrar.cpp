// SPDX-License-Identifier: MIT
#include "app/ui/theme/FontRegistrar.h"

#include <QCoreApplication>
#include <QDir>
#include <QFontDatabase>

#include <cstdio>

namespace FontRegistrar {
namespace {

bool available = false;

void registerFile(const QString& file) {
    if (QFontDatabase::addApplicationFont(file) < 0)
        std::printf("[Brenvik] Font could not be registered: %s\n", qUtf8Printable(file));
}

}  // namespace

void registerBundledFonts(const QString& resourceFolder) {
    available = false;
    const QDir fonts(resourceFolder + QStringLiteral("/Fonts"));
    if (!fonts.exists()) {
        std::puts("[Brenvik] Fonts directory missing from bundle — falling back to system fonts.");
        return;
    }
    for (const auto& file : fonts.entryInfoList({QStringLiteral("*.otf"), QStringLiteral("*.ttf")}, QDir::Files))
        registerFile(file.absoluteFilePath());
    const auto families = QFontDatabase::families();
    available =
        families.contains(QStringLiteral("Brenvik Text")) && families.contains(QStringLiteral("Brenvik Display"));
    if (!available)
        std::puts("[Brenvik] Bundled families unavailable after registration — falling back to system fonts.");
}

bool isAvailable() {
    return available;
}

QString resourceFolder() {
    const QDir program(QCoreApplication::applicationDirPath());
    const QString built = program.filePath(QStringLiteral("resources"));
    return QDir(built).exists() ? built : program.filePath(QStringLiteral("../share/brenvik"));
}

}  // namespace FontRegistrar
