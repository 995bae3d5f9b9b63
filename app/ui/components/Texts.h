// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <filesystem>
#include <string>
#include <string_view>

/// The vault's text as the window shows it.
[[nodiscard]] inline QString qtText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// What the window's text is in the vault. Any text of a field may be a secret, so it leaves no copy on its way, which
/// Qt's own conversion to a text of the standard library does.
[[nodiscard]] inline std::string vaultText(const QString& text) {
    QByteArray bytes = text.toUtf8();
    std::string result(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    secureWipe(bytes.data(), static_cast<std::size_t>(bytes.size()));
    return result;
}

/// A path that a panel of Qt's gave, and the other way.
[[nodiscard]] inline std::filesystem::path pathOf(const QString& text) {
    return QFile::encodeName(text).toStdString();
}
[[nodiscard]] inline QString qtPath(const std::filesystem::path& path) {
    return QFile::decodeName(path.c_str());
}
