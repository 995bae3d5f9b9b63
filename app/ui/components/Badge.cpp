// SPDX-License-Identifier: MIT
#include "app/ui/components/Badge.h"

#include "app/ui/components/Accessible.h"
#include "app/ui/components/LongText.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Symbol.h"
#include "app/ui/theme/Theme.h"

#include <QPainter>

namespace {

constexpr int padding = 8;
constexpr int symbolSide = 12;
constexpr int symbolGap = 5;

int contentWidth(const QString& text, bool hasSymbol) {
    return QFontMetrics(BrandFont::label()).horizontalAdvance(text) + (hasSymbol ? symbolSide + symbolGap : 0);
}

void paintContent(QPainter& painter, const QRectF& area, const QString& text, const QColor& tint,
                  const QString& symbol) {
    painter.setFont(BrandFont::label());
    double left = area.left();
    if (!symbol.isEmpty()) {
        Symbol::paint(painter, QRectF(left, area.center().y() - symbolSide / 2.0, symbolSide, symbolSide), symbol,
                      tint);
        left += symbolSide + symbolGap;
    }
    painter.setPen(tint);
    const QString shown =
        QFontMetrics(BrandFont::label()).elidedText(text, Qt::ElideRight, static_cast<int>(area.right() - left) + 1);
    painter.drawText(QRectF(left, area.top(), area.right() - left + 1, area.height()), Qt::AlignVCenter | Qt::AlignLeft,
                     shown);
}

}  // namespace

Badge::Badge(const QString& text, const QColor& tint, const QString& symbol, QWidget* parent)
    : QWidget(parent), m_text(LongText::beginning(text)), m_tint(tint), m_symbol(symbol) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    Accessible::setRole(*this, QAccessible::StaticText);
    setAccessibleName(m_text);
}

void Badge::setBare(bool isBare) {
    m_isBare = isBare;
    updateGeometry();
}

QSize Badge::sizeHint() const {
    return {m_isBare ? contentWidth(m_text, !m_symbol.isEmpty()) : widthFor(m_text, !m_symbol.isEmpty()), height};
}

QSize Badge::minimumSizeHint() const {
    return {std::min(sizeHint().width(), 40), height};
}

int Badge::widthFor(const QString& text, bool hasSymbol) {
    return contentWidth(text, hasSymbol) + 2 * padding;
}

void Badge::paint(QPainter& painter, const QRectF& area, const QString& text, const QColor& tint,
                  const QString& symbol) {
    if (tint == Palette::textMuted)  // too faint on the ground that the soft one has
        Painting::roundedBox(painter, area, Radius::pill, Palette::surface, Palette::line);
    else
        Painting::roundedBox(painter, area, Radius::pill,
                             tint == Palette::textSoft ? Palette::hover : Palette::withOpacity(tint, 0.14));
    paintContent(painter, area.adjusted(padding, 0, -padding, 0), text, tint, symbol);
}

/// A word that has no room is elided; the tooltip has it whole.
void Badge::resizeEvent(QResizeEvent*) {
    setToolTip(width() < sizeHint().width() ? m_text : QString());
}

void Badge::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (m_isBare)
        paintContent(painter, rect(), m_text, m_tint, m_symbol);
    else
        paint(painter, rect(), m_text, m_tint, m_symbol);
}
