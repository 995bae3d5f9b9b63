// SPDX-License-Identifier: MIT
#include "app/ui/components/TextArea.h"

#include "app/ui/Theme.h"
#include "app/ui/components/Painting.h"

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
