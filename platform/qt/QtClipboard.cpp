// SPDX-License-Identifier: MIT
#include "platform/qt/QtClipboard.h"

#include "platform/qt/SecretMimeData.h"

#include <QClipboard>

#include <utility>

QtClipboard::QtClipboard(QClipboard& clipboard, ChangeCounter changeCounter)
    : m_clipboard(clipboard), m_changeCounter(std::move(changeCounter)) {}

// Never QClipboard::clear(), not even for the empty text: it leaves the clipboard without an owner for a moment, and
// clipboard managers answer by putting back what they remember.
void QtClipboard::setText(std::string_view text) {
    // A manager that knows the hint passes over the end of a secret as it did over the secret itself.
    if (text.empty())
        return setSecret(text, {});
    m_clipboard.setText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

void QtClipboard::setSecret(std::string_view text, std::span<const std::string_view> markerTypes) {
    m_clipboard.setMimeData(new SecretMimeData(text, markerTypes));  // which takes it over
}

std::string QtClipboard::text() {
    return m_clipboard.text().toStdString();
}
