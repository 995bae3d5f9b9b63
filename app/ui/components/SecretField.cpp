// SPDX-License-Identifier: MIT
#include "app/ui/components/SecretField.h"

#include "app/ui/components/EyeButton.h"
#include "app/ui/components/ShownSecrets.h"
#include "app/ui/components/Texts.h"
#include "app/ui/theme/Theme.h"
#include "core/model/SecureString.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QSignalBlocker>

#include <algorithm>

namespace {

constexpr int eyeSide = 24;
constexpr int eyeSymbol = 16;
constexpr double dotSpacing = 1.5;
constexpr Qt::InputMethodHints secretHints =
    Qt::ImhHiddenText | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase;

/// Overwrites the letters that a field holds, which it shares with the text that it gives away.
void overwrite(const QString& shared) {
    if (shared.capacity() > 0)  // a literal, which lies in read-only memory, has none
        std::fill_n(const_cast<QChar*>(shared.constData()), shared.size(), QChar());
}

}  // namespace

SecretField::SecretField(const QString& name, QWidget* parent) : TextField(name, parent), m_eye(new EyeButton(this)) {
    setDragEnabled(false);
    m_eye->setSides(eyeSide, eyeSymbol);
    connect(this, &SecretField::textChanged, this, &SecretField::showLetters);
    connect(m_eye, &IconButton::clicked, this, [this] { setRevealed(!m_isRevealed); });
    showRevealed();
}

SecretField::~SecretField() {
    const QSignalBlocker quiet(this);  // who listened may be half gone already
    setSecret(QString());
    if (m_isRevealed)
        ShownSecrets::noteEnd();
}

void SecretField::setRevealed(bool isRevealed) {
    if (m_isRevealed == isRevealed)
        return;
    m_isRevealed = isRevealed;
    showRevealed();
    if (!isRevealed)
        ShownSecrets::noteEnd();
    emit revealedChanged(isRevealed);
}

void SecretField::setSecret(const QString& secret) {
    overwrite(text());
    replaceText(secret);
}

std::string SecretField::secret() const {
    return wholeText();
}

void SecretField::setCopying(std::function<void(std::string_view)> copy) {
    m_copy = std::move(copy);
}

void SecretField::setMasking(bool isMasking) {
    m_isMasking = isMasking;
    m_isRevealed = false;
    showRevealed();
}

void SecretField::showRevealed() {
    setEchoMode(m_isRevealed || !m_isMasking ? QLineEdit::Normal : QLineEdit::Password);
    // After the mode, which has hints of its own: a secret in the clear is one all the same.
    setInputMethodHints(m_isMasking ? secretHints : Qt::ImhNone);
    setTrailingRoom(m_isMasking ? eyeSide : 0);
    m_eye->setVisible(m_isMasking);
    m_eye->showRevealed(m_isRevealed);
    showLetters();
}

void SecretField::showLetters() {
    setMono(m_isRevealed && m_isMasking);
    // The dots are a little apart, so that they can be counted; a placeholder does not.
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

// A field with readable text puts what is selected in it on the primary selection at once, by the pointer and by keys,
// and every program reads that. So a shown secret is selected here, where nothing is offered.

void SecretField::mouseReleaseEvent(QMouseEvent* event) {
    if (!showsSecret() || event->button() != Qt::LeftButton)
        TextField::mouseReleaseEvent(event);
}

void SecretField::keyPressEvent(QKeyEvent* event) {
    if (!showsSecret())
        TextField::keyPressEvent(event);
    else if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->matches(QKeySequence::Cut))
        cut();
    else if (event->matches(QKeySequence::Undo))
        undo();  // which selects what comes back
    else if (event->matches(QKeySequence::Redo))
        redo();
    else if (!select(*event) && !deleteLine(*event))
        TextField::keyPressEvent(event);
}

bool SecretField::select(const QKeyEvent& event) {
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const auto is = [&](QKeySequence::StandardKey key) { return event.matches(key); };
    if (is(QKeySequence::SelectAll))
        selectAll();
    else if (is(isMirrored ? QKeySequence::SelectPreviousChar : QKeySequence::SelectNextChar))
        cursorForward(true);
    else if (is(isMirrored ? QKeySequence::SelectNextChar : QKeySequence::SelectPreviousChar))
        cursorBackward(true);
    else if (is(QKeySequence::SelectNextWord))
        cursorWordForward(true);
    else if (is(QKeySequence::SelectPreviousWord))
        cursorWordBackward(true);
    else if (is(QKeySequence::SelectStartOfLine) || is(QKeySequence::SelectStartOfBlock))
        home(true);
    else if (is(QKeySequence::SelectEndOfLine) || is(QKeySequence::SelectEndOfBlock))
        end(true);
    else
        return false;
    return true;
}

/// What these keys take away, a line leaves on the clipboard.
bool SecretField::deleteLine(const QKeyEvent& event) {
    if (event.matches(QKeySequence::DeleteEndOfLine))
        setSelection(cursorPosition(), static_cast<int>(text().size()));
    else if (event.matches(QKeySequence::DeleteCompleteLine))
        selectAll();
    else
        return false;
    if (hasSelectedText() && !isReadOnly())
        del();
    return true;
}

void SecretField::copy() const {
    if (!m_isMasking)
        return TextField::copy();
    if (!showsSecret() || !m_copy || !hasSelectedText())
        return;
    auto secret = isAllSelected() ? wholeText() : vaultText(selectedText());
    m_copy(secret);
    wipe(secret);
}

void SecretField::cut() {
    if (isReadOnly())
        return;
    if (!m_isMasking)
        return TextField::cut();
    if (!showsSecret() || !m_copy || !hasSelectedText())
        return;
    copy();
    del();
}

void SecretField::contextMenuEvent(QContextMenuEvent* event) {
    auto* const menu = new QMenu(this);  // not on the stack: a lock takes the field away while the menu shows
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const bool isCopied = hasSelectedText() && (!m_isMasking || (showsSecret() && m_copy));
    menu->addAction(QStringLiteral("Kes"), this, &SecretField::cut)->setEnabled(isCopied && !isReadOnly());
    menu->addAction(QStringLiteral("Kopyala"), this, &SecretField::copy)->setEnabled(isCopied);
    menu->addAction(QStringLiteral("Yapıştır"), this, &SecretField::paste)->setEnabled(!isReadOnly());
    menu->addSeparator();
    menu->addAction(QStringLiteral("Tümünü Seç"), this, &SecretField::selectAll)->setEnabled(!text().isEmpty());
    menu->popup(event->globalPos());
}
