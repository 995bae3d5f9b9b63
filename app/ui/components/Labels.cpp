// SPDX-License-Identifier: MIT
#include "app/ui/components/Labels.h"

#include "app/ui/components/Bidi.h"
#include "app/ui/components/LongText.h"
#include "app/ui/theme/Theme.h"

#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

void dress(QLabel& label, const QFont& font, const QColor& colour) {
    label.setTextFormat(Qt::PlainText);
    label.setFont(font);
    QPalette colours = label.palette();
    colours.setColor(QPalette::WindowText, colour);
    label.setPalette(colours);
}

/// A number, or all that is between two numbers, and the width that it is given.
struct Run {
    QString text;
    int width;
    bool isNumber;
};

// A number has the width of the widest of as many digits. One digit beside the other as wide as the widest would tear
// "11" into two.
std::vector<Run> figureRuns(const QString& text, const QFontMetrics& metrics) {
    int figureWidth = 0;
    for (char digit = '0'; digit <= '9'; ++digit)
        figureWidth = std::max(figureWidth, metrics.horizontalAdvance(QLatin1Char(digit)));
    std::vector<Run> runs;
    for (const QChar character : text) {
        if (runs.empty() || runs.back().isNumber != character.isDigit())
            runs.push_back({.text = {}, .width = 0, .isNumber = character.isDigit()});
        runs.back().text += character;
    }
    for (auto& run : runs)
        run.width =
            run.isNumber ? figureWidth * static_cast<int>(run.text.size()) : metrics.horizontalAdvance(run.text);
    return runs;
}

/// A paragraph's text in the form that a layout breaks at.
QString laidOutText(const QString& text) {
    QString laidOut = Bidi::withQuotesIsolated(text);
    laidOut.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    laidOut.replace(QLatin1Char('\n'), QChar::LineSeparator);
    return laidOut;
}

constexpr double lineSpacing = 1.15;  // of running text; the lines of a heading are closer
constexpr int largestText = 16;
constexpr int widestHint = 420;  // a paragraph asks for no more, and takes what it is given

}  // namespace

TextLabel::TextLabel(const QString& text, const QFont& font, const QColor& colour, QWidget* parent)
    : QLabel(LongText::beginning(text), parent) {
    dress(*this, font, colour);
}

void TextLabel::setText(const QString& text) {
    QLabel::setText(LongText::beginning(text));
}

void TextLabel::setColour(const QColor& colour) {
    dress(*this, font(), colour);
}

void TextLabel::setElideMode(Qt::TextElideMode mode) {
    m_elideMode = mode;
    update();
}

void TextLabel::setTabularFigures(bool isTabular) {
    m_isTabular = isTabular;
    updateGeometry();
    update();
}

QSize TextLabel::sizeHint() const {
    if (!m_isTabular)
        return QLabel::sizeHint();
    int width = 0;
    for (const auto& run : figureRuns(text(), fontMetrics()))
        width += run.width;
    // The runs are whole points wide each, and the text as one may be a little wider than their sum.
    return {width + 2, QLabel::sizeHint().height()};
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
    if (m_isTabular && isWhole)
        return paintTabular(painter, area, line);
    painter.drawText(area,
                     static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment())) | Qt::TextSingleLine,
                     Bidi::isolated(Bidi::withQuotesIsolated(shown)));
}

void TextLabel::paintTabular(QPainter& painter, const QRect& area, const QString& line) const {
    int left = area.left();
    const auto runs = figureRuns(line, fontMetrics());
    for (const auto& run : runs) {
        const QRect place(left, area.top(), run.width, area.height());
        // The spare room of a number at the beginning lies outside of the text, as does that of one at the end.
        const auto side = runs.size() == 1        ? Qt::AlignHCenter
                          : &run == &runs.front() ? Qt::AlignRight
                          : &run == &runs.back()  ? Qt::AlignLeft
                                                  : Qt::AlignHCenter;
        painter.drawText(QStyle::visualRect(layoutDirection(), area, place),
                         static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine, run.text);
        left += run.width;
    }
}

Paragraph::Paragraph(const QString& text, const QFont& font, const QColor& colour, QWidget* parent)
    : QLabel(LongText::beginning(text), parent) {
    dress(*this, font, colour);
    // A paragraph's height follows from the width that it gets.
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void Paragraph::setText(const QString& text) {
    QLabel::setText(LongText::beginning(text));
}

void Paragraph::setMostLines(int count) {
    m_mostLines = count;
    m_measuredWidth = -1;
    updateGeometry();
    update();
}

void Paragraph::layOut(QTextLayout& lines, int width) const {
    QTextOption option(QStyle::visualAlignment(layoutDirection(), alignment()) | Qt::AlignAbsolute);
    option.setWrapMode(LongText::wrapMode(lines.text()));
    option.setTextDirection(lines.text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    lines.setTextOption(option);
    lines.setFont(font());
    lines.beginLayout();
    double top = 0;
    for (auto line = lines.createLine(); line.isValid(); line = lines.createLine()) {
        line.setLineWidth(std::max(width, 1));
        line.setPosition(QPointF(0, top));
        top += std::round(line.height() * (font().pixelSize() > largestText ? 1 : lineSpacing));
    }
    lines.endLayout();
}

/// What is shown of a text whose lines are too many.
QString Paragraph::shortened(const QTextLayout& lines, int width) const {
    const int start = lines.lineAt(m_mostLines - 1).textStart();
    QString rest = lines.text().mid(start);
    rest.replace(QChar::LineSeparator, QLatin1Char(' '));
    return lines.text().left(start) + fontMetrics().elidedText(rest, Qt::ElideRight, width);
}

int Paragraph::heightForWidth(int width) const {
    if (width != m_measuredWidth || text() != m_measuredText) {
        QTextLayout lines(laidOutText(text()));
        layOut(lines, width);
        const int count = m_mostLines > 0 ? std::min(m_mostLines, lines.lineCount()) : lines.lineCount();
        const auto last = lines.lineAt(std::max(count, 1) - 1);
        m_measuredText = text();
        m_measuredWidth = width;
        m_measuredHeight = count == 0 ? fontMetrics().height() : static_cast<int>(std::ceil(last.y() + last.height()));
    }
    return m_measuredHeight;
}

QSize Paragraph::sizeHint() const {
    int widest = 0;
    for (const auto& line : text().split(QLatin1Char('\n')))
        widest = std::min(widestHint, std::max(widest, fontMetrics().horizontalAdvance(line) + 1));
    return {widest, heightForWidth(widest)};
}

QSize Paragraph::minimumSizeHint() const {
    return {0, fontMetrics().height()};
}

void Paragraph::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect area = contentsRect();
    QTextLayout lines(laidOutText(text()));
    layOut(lines, area.width());
    const bool isWhole = m_mostLines == 0 || lines.lineCount() <= m_mostLines;
    if (toolTip() != (isWhole ? QString() : text()))
        setToolTip(isWhole ? QString() : text());
    if (!isWhole) {
        lines.setText(shortened(lines, area.width()));
        layOut(lines, area.width());
    }
    double top = area.top();
    if (alignment().testFlag(Qt::AlignVCenter) && lines.lineCount() > 0)
        top += (area.height() - lines.boundingRect().height()) / 2;
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    lines.draw(&painter, QPointF(area.left(), top));
}

FieldLabel::FieldLabel(const QString& text, QWidget* parent)
    : TextLabel(text, BrandFont::label(), Palette::textSoft, parent) {}
