// SPDX-License-Identifier: MIT
#include "app/ui/components/Labels.h"

#include "app/ui/Theme.h"

#include <QPainter>
#include <QStyle>

namespace {

void dress(QLabel& label, const QFont& font, const QColor& colour) {
    label.setTextFormat(Qt::PlainText);
    label.setFont(font);
    QPalette colours = label.palette();
    colours.setColor(QPalette::WindowText, colour);
    label.setPalette(colours);
}

}  // namespace

TextLabel::TextLabel(const QString& text, const QFont& font, const QColor& colour, QWidget* parent)
    : QLabel(text, parent) {
    dress(*this, font, colour);
}

void TextLabel::setColour(const QColor& colour) {
    dress(*this, font(), colour);
}

void TextLabel::setElideMode(Qt::TextElideMode mode) {
    m_elideMode = mode;
    update();
}

QSize TextLabel::minimumSizeHint() const {
    return {std::min(QLabel::minimumSizeHint().width(), fontMetrics().averageCharWidth() * 4),
            QLabel::minimumSizeHint().height()};
}

void TextLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect area = contentsRect();
    const QString line = QString(text()).replace(QLatin1Char('\n'), QLatin1Char(' '));
    const QString shown = fontMetrics().elidedText(line, m_elideMode, area.width());
    const bool isWhole = shown == line;
    if (toolTip() != (isWhole ? QString() : text()))
        setToolTip(isWhole ? QString() : text());
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    painter.drawText(
        area, static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment())) | Qt::TextSingleLine, shown);
}

Paragraph::Paragraph(const QString& text, const QFont& font, const QColor& colour, QWidget* parent)
    : QLabel(text, parent) {
    dress(*this, font, colour);
    setWordWrap(true);
    // A paragraph's height follows from the width that it gets.
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize Paragraph::minimumSizeHint() const {
    return {0, fontMetrics().height()};
}

FieldLabel::FieldLabel(const QString& text, QWidget* parent)
    : TextLabel(text, BrandFont::label(), Palette::textSoft, parent) {}
