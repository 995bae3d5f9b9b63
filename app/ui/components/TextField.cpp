// SPDX-License-Identifier: MIT
#include "app/ui/components/TextField.h"

#include "app/ui/components/LongText.h"
#include "app/ui/components/Texts.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"
#include "core/text/Text.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScopedValueRollback>
#include <QSignalBlocker>

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace {

constexpr int largeHeight = 38;
constexpr int stepsOfAChange = 8;
constexpr int lineInset = 2;       // of the text, beside its margins
constexpr int caretClearance = 3;  // of the placeholder, so that the caret does not cover its first letter

}  // namespace

TextField::TextField(const QString& name, QWidget* parent) : QLineEdit(parent) {
    setAccessibleName(name);
    setFrame(false);
    setMaxLength(std::numeric_limits<int>::max());  // Qt's own limit would cut a long text of a vault off
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QPalette colours = palette();
    colours.setColor(QPalette::Base, Qt::transparent);
    colours.setColor(QPalette::Text, Palette::text);
    colours.setColor(QPalette::PlaceholderText, Qt::transparent);  // it is painted here
    setPalette(colours);
    showFont();
    showRoom();
    connect(this, &TextField::textChanged, this, [this](const QString& text) { followText(text); });
    connect(this, &TextField::selectionChanged, this, [this] { m_selection = selectionLength(); });
}

void TextField::setSize(Size size) {
    m_size = size;
    showFont();
    showRoom();
}

void TextField::setMono(bool isMono) {
    m_isMono = isMono;
    showFont();
}

void TextField::setTrailingRoom(int points) {
    m_trailingRoom = points;
    showRoom();
}

void TextField::setLeadingRoom(int points) {
    m_leadingRoom = points;
    showRoom();
}

/// The history keeps a step for each letter that comes or goes, and at most a few more for a change.
void TextField::followHistory(qsizetype length) {
    m_history += std::abs(length - m_length) + 2 * m_selection + stepsOfAChange;
    m_length = length;
}

void TextField::setWholeText(std::string_view text) {
    const bool isKept = LongText::isTooLongForField(text.size());
    setKept(isKept ? std::optional(SecureString(text)) : std::nullopt);
    showText(isKept ? LongText::beginning(text) : qtText(text));
    setCursorPosition(0);
}

std::string TextField::wholeText() const {
    return m_kept ? m_kept->value() : vaultText(text());
}

// Of a long text the beginning says it nearly always, with its ellipsis left out.
bool TextField::hasContent() const {
    const auto isBlank = [](const QString& text) { return Text::trimmingWhitespace(vaultText(text)).empty(); };
    return !isBlank(m_kept ? text().chopped(1) : text()) || !Text::trimmingWhitespace(wholeText()).empty();
}

void TextField::setKept(std::optional<SecureString> text) {
    if (!text && !m_kept)
        return;
    m_kept = std::move(text);
    setReadOnly(m_kept.has_value());
    setToolTip(m_kept ? LongText::whyItIsKept() : QString());
    setAccessibleDescription(toolTip());
}

bool TextField::isAllSelected() const {
    return hasSelectedText() && selectionLength() == text().size();
}

/// What is kept can be emptied, by whatever way; nothing else changes it, not even in part what shows of it.
void TextField::followText(const QString& text) {
    followHistory(text.size());
    if (m_isShowing || !m_kept)
        return;
    if (text.isEmpty())
        setKept(std::nullopt);
    else
        showText(LongText::beginning(m_kept->value()));
}

void TextField::replaceText(const QString& text) {
    setKept(std::nullopt);
    showText(text);
}

void TextField::showText(const QString& text) {
    const QScopedValueRollback showing(m_isShowing, true);
    const bool wasEmpty = this->text().isEmpty();
    overwriteHistory();
    if (!text.isEmpty())
        setText(text);
    else if (!wasEmpty)
        emit textChanged(text);
}

// A line that is given a text starts its history anew, in the memory that the letters of the old one stay in. As many
// steps as there may have been are written over them, and leave the same way.
void TextField::overwriteHistory() {
    const QSignalBlocker quiet(this);
    setText({});
    m_isOverwriting = true;
    const int most = maxLength();
    setMaxLength(std::numeric_limits<int>::max());
    insert(QString(m_history, QLatin1Char(' ')));
    setText({});
    setMaxLength(most);
    m_isOverwriting = false;
    m_length = 0;
    m_selection = 0;
    m_history = 0;
}

void TextField::showFont() {
    const int size = m_size == Size::large ? 14 : 13;
    setFont(m_isMono ? BrandFont::mono(size) : BrandFont::body(size));
}

void TextField::showRoom() {
    const int padding = m_size == Size::large ? Metric::m : Metric::s;
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const int leading = padding + m_leadingRoom;
    const int trailing = padding + m_trailingRoom;
    setTextMargins(isMirrored ? trailing : leading, 0, isMirrored ? leading : trailing, 0);
    updateGeometry();
}

QSize TextField::sizeHint() const {
    return {200, m_size == Size::large ? largeHeight : Metric::controlHeight};
}

QSize TextField::minimumSizeHint() const {
    return {60, sizeHint().height()};
}

bool TextField::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_E && key->modifiers() == Qt::ControlModifier) {
            event->ignore();
            return false;  // on to the window, which claims it for no field
        }
    }
    return QLineEdit::event(event);
}

void TextField::copy() const {
    if (m_kept && isAllSelected())
        QApplication::clipboard()->setText(qtText(m_kept->value()));
    else
        QLineEdit::copy();
}

/// What would be too long to be edited afterwards is put in its place without being laid out.
void TextField::paste() {
    if (isReadOnly())
        return;
    const QString pasted = QApplication::clipboard()->text();
    const auto length = std::min<qsizetype>(text().size() + pasted.size(), maxLength());
    if (!LongText::isTooLongForField(static_cast<std::size_t>(length)))
        return QLineEdit::paste();
    QString whole = text();
    const int start = hasSelectedText() ? selectionStart() : cursorPosition();
    whole.replace(start, static_cast<int>(selectedText().size()), pasted);
    setWholeText(vaultText(whole));
}

void TextField::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste) && !isReadOnly())
        return paste();
    if (!m_kept || !isAllSelected())
        return QLineEdit::keyPressEvent(event);
    if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace)
        clear();
    else
        QLineEdit::keyPressEvent(event);
}

/// The line's own menu would copy no more than what shows.
void TextField::contextMenuEvent(QContextMenuEvent* event) {
    if (!m_kept)
        return QLineEdit::contextMenuEvent(event);
    auto* const menu = new QMenu(this);  // not on the stack: a lock takes the field away while the menu shows
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QStringLiteral("Kopyala"), this, &TextField::copy)->setEnabled(hasSelectedText());
    menu->addAction(QStringLiteral("Tümünü Seç"), this, &TextField::selectAll);
    menu->popup(event->globalPos());
}

void TextField::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(0.4);
    Painting::roundedBox(painter, rect(), Radius::control, Palette::canvas,
                         hasFocus() ? Palette::accent : Palette::line);
    paintPlaceholder(painter);
    painter.end();
    QLineEdit::paintEvent(event);
    if (hasFocus() && !isReadOnly() && !hasSelectedText()) {
        painter.begin(this);
        // Qt's rectangle has five points more to the left of the cursor and four to the right.
        Painting::tintCaret(painter, QRectF(cursorRect()).adjusted(4, 0, -3, 0));
    }
}

void TextField::paintPlaceholder(QPainter& painter) const {
    if (placeholderText().isEmpty() || !displayText().isEmpty())
        return;
    const auto margins = textMargins();
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const int leading = lineInset + caretClearance;
    const QRect line = rect().marginsRemoved(margins).adjusted(isMirrored ? lineInset : leading, 0,
                                                               isMirrored ? -leading : -lineInset, 0);
    painter.setFont(font());
    painter.setPen(Palette::textMuted);
    painter.drawText(
        line,
        static_cast<int>(Qt::AlignVCenter | (isMirrored ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute) |
            Qt::TextSingleLine,
        fontMetrics().elidedText(placeholderText(), Qt::ElideRight, line.width()));
}
