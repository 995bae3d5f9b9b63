// SPDX-License-Identifier: MIT
#include "platform/qt/SecretMimeData.h"

#include "core/platform/Clipboard.h"
#include "core/primitives/Bytes.h"

#include <QVariant>

namespace {

// What clipboard managers on Linux look at, and the word in it that they look for.
constexpr std::string_view managerHintType = "x-kde-passwordManagerHint";
constexpr std::string_view managerHint = "secret";

QString qString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QByteArray qByteArray(std::string_view bytes) {
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

}  // namespace

SecretMimeData::SecretMimeData(std::string_view text, std::span<const std::string_view> markerTypes)
    : m_text(qByteArray(text)) {
    for (const auto marker : markerTypes)
        m_formats += qString(marker);
    m_formats += qString(managerHintType);
    m_formats += qString(Clipboard::textType);
}

SecretMimeData::~SecretMimeData() {
    // Not through data(), which would make a copy of a shared text and overwrite that.
    secureWipe(const_cast<char*>(m_text.constData()), static_cast<std::size_t>(m_text.size()));
}

QVariant SecretMimeData::retrieveData(const QString& format, QMetaType) const {
    if (format == qString(Clipboard::textType))
        return m_text;
    if (format == qString(managerHintType))
        return qByteArray(managerHint);
    return m_formats.contains(format) ? QVariant(QByteArray("")) : QVariant();
}
