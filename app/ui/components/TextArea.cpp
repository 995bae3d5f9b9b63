// SPDX-License-Identifier: MIT
#include "app/ui/components/TextArea.h"

#include "app/ui/Theme.h"
#include "app/ui/components/Painting.h"

#include <QKeyEvent>
#include <QPainter>

TextArea::TextArea(const QString& name, QWidget* parent) : QPlainTextEdit(parent) {
    setAccessibleName(name);
    setTabChangesFocus(true);
    setFrameShape(QFrame::NoFrame);
    setFont(BrandFont::bodyText());
    setMinimumHeight(4 * Metric::controlHeightSmall);
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

void TextArea::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    Painting::roundedBox(painter, viewport()->rect(), Radius::control, Palette::canvas,
                         hasFocus() ? Palette::accent : Palette::line);
    painter.end();
    QPlainTextEdit::paintEvent(event);
}

void TextArea::focusInEvent(QFocusEvent* event) {
    QPlainTextEdit::focusInEvent(event);
    viewport()->update();
}

void TextArea::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    viewport()->update();
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
