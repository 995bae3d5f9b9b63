// SPDX-License-Identifier: MIT
#include "app/ui/components/SecretField.h"

#include "app/ui/Theme.h"
#include "app/ui/components/IconButton.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QSignalBlocker>

#include <algorithm>
#include <memory>

namespace {

constexpr int eyeSide = 24;
constexpr int eyeSymbol = 16;
constexpr double dotSpacing = 1.5;

/// Selecting in a field with readable text puts it on the primary selection at once; a secret must not stay there.
void leavePrimarySelection(const QLineEdit& field) {
    auto* const clipboard = QApplication::clipboard();
    if (clipboard->supportsSelection() && clipboard->ownsSelection() && field.hasSelectedText())
        clipboard->setText(QString(), QClipboard::Selection);
}

/// Overwrites the letters that a field holds, which it shares with the text that it gives away.
void overwrite(const QString& shared) {
    if (shared.capacity() > 0)  // a literal, which lies in read-only memory, has none
        std::fill_n(const_cast<QChar*>(shared.constData()), shared.size(), QChar());
}

}  // namespace

SecretField::SecretField(const QString& name, QWidget* parent)
    : TextField(name, parent), m_eye(new IconButton(QStringLiteral("eye"), tr("Göster"), this)) {
    setInputMethodHints(Qt::ImhHiddenText | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    setDragEnabled(false);
    m_eye->setSides(eyeSide, eyeSymbol);
    connect(this, &SecretField::textChanged, this, &SecretField::showLetters);
    connect(m_eye, &IconButton::clicked, this, [this] { setRevealed(!m_isRevealed); });
    showRevealed();
}

SecretField::~SecretField() {
    const QSignalBlocker quiet(this);  // who listened may be half gone already
    setSecret(QString());
}

void SecretField::setRevealed(bool isRevealed) {
    if (m_isRevealed == isRevealed)
        return;
    m_isRevealed = isRevealed;
    showRevealed();
    emit revealedChanged(isRevealed);
}

void SecretField::setSecret(const QString& secret) {
    overwrite(text());
    setText(secret);  // which drops the undo history, other than typing over it
}

std::string SecretField::secret() const {
    return text().toStdString();
}

void SecretField::setMasking(bool isMasking) {
    m_isMasking = isMasking;
    m_isRevealed = false;
    showRevealed();
}

void SecretField::showRevealed() {
    setEchoMode(m_isRevealed || !m_isMasking ? QLineEdit::Normal : QLineEdit::Password);
    setTrailingRoom(m_isMasking ? eyeSide : 0);
    m_eye->setVisible(m_isMasking);
    m_eye->setSymbol(m_isRevealed ? QStringLiteral("eye.slash") : QStringLiteral("eye"));
    m_eye->setTip(m_isRevealed ? tr("Gizle") : tr("Göster"));
    showLetters();
}

void SecretField::showLetters() {
    setMono(m_isRevealed && m_isMasking);
    // The dots stand a little apart, so that they can be counted; a placeholder does not.
    const bool areDots = m_isMasking && !m_isRevealed && !text().isEmpty();
    QFont letters = font();
    letters.setLetterSpacing(QFont::AbsoluteSpacing, areDots ? dotSpacing : 0);
    setFont(letters);
}

void SecretField::resizeEvent(QResizeEvent* event) {
    TextField::resizeEvent(event);
    const int gap = (height() - eyeSide) / 2;
    const int left = layoutDirection() == Qt::RightToLeft ? gap : width() - eyeSide - gap;
    m_eye->setGeometry(left, gap, eyeSide, eyeSide);
}

void SecretField::mouseReleaseEvent(QMouseEvent* event) {
    TextField::mouseReleaseEvent(event);
    leavePrimarySelection(*this);
}

void SecretField::keyReleaseEvent(QKeyEvent* event) {
    TextField::keyReleaseEvent(event);
    leavePrimarySelection(*this);
}

void SecretField::contextMenuEvent(QContextMenuEvent* event) {
    const std::unique_ptr<QMenu> menu(createStandardContextMenu());
    menu->exec(event->globalPos());
    leavePrimarySelection(*this);
}
