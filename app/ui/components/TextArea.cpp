// SPDX-License-Identifier: MIT
#include "app/ui/components/TextArea.h"

#include "app/ui/Theme.h"
#include "app/ui/components/Painting.h"

#include <QKeyEvent>
#include <QPainter>

namespace {

constexpr int textHeight = 5 * Metric::controlHeightSmall;
constexpr double disabledOpacity = 0.4;

}  // namespace

TextArea::TextArea(const QString& name, QWidget* parent) : QPlainTextEdit(parent) {
    setAccessibleName(name);
    setTabChangesFocus(true);
    setFrameShape(QFrame::NoFrame);
    setFont(BrandFont::bodyText());
    viewport()->setAutoFillBackground(false);
    setViewportMargins(1, Metric::hairline, 1, Metric::hairline);
    document()->setDocumentMargin(Metric::s);
    QPalette colours = palette();
    colours.setColor(QPalette::Base, Qt::transparent);
    colours.setColor(QPalette::Text, Palette::text);
    colours.setColor(QPalette::PlaceholderText, Palette::textMuted);
    setPalette(colours);
}

void TextArea::setWholeText(const QString& text) {
    m_givenText = text;
    setPlainText(text);
    document()->setModified(false);
}

QString TextArea::wholeText() const {
    if (!document()->isModified())
        return m_givenText;
    // The raw text keeps the blanks that do not break, which the plain one makes common ones.
    return document()->toRawText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

QSize TextArea::sizeHint() const {
    return {200, textHeight};
}

bool TextArea::event(QEvent* event) {
    if (event->type() != QEvent::Paint)
        return QPlainTextEdit::event(event);
    // The frame goes around the scroll bar too; the text is painted by the viewport above it.
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(disabledOpacity);
    Painting::roundedBox(painter, rect(), Radius::control, Palette::canvas,
                         hasFocus() ? Palette::accent : Palette::line);
    return true;
}

void TextArea::paintEvent(QPaintEvent* event) {
    QPlainTextEdit::paintEvent(event);
    if (!hasFocus() || isReadOnly() || textCursor().hasSelection())
        return;
    QPainter painter(viewport());
    Painting::tintCaret(painter, QRectF(cursorRect()).adjusted(-1, 0, 1, 0));
}

void TextArea::focusInEvent(QFocusEvent* event) {
    QPlainTextEdit::focusInEvent(event);
    update();
}

void TextArea::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    update();
}

void TextArea::keyPressEvent(QKeyEvent* event) {
    // Ctrl+Return is the form's, and a Shift that is still down must not make another kind of line end.
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && event->modifiers().testFlag(Qt::ControlModifier))
        return event->ignore();
    if (isReturn && event->modifiers().testFlag(Qt::ShiftModifier))
        return insertPlainText(QStringLiteral("\n"));
    QPlainTextEdit::keyPressEvent(event);
}
