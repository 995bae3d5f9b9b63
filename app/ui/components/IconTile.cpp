// SPDX-License-Identifier: MIT
#include "app/ui/components/IconTile.h"

#include "app/ui/components/Accessible.h"
#include "app/ui/components/EntryIcon.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Symbol.h"
#include "app/ui/theme/Theme.h"

#include <QIcon>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr double groundOpacity = 0.13;

}  // namespace

IconTile::IconTile(std::int64_t iconID, int side, QWidget* parent) : QWidget(parent), m_iconID(iconID), m_side(side) {
    setFixedSize(side, side);
}

void IconTile::setIconID(std::int64_t iconID) {
    m_iconID = iconID;
    update();
}

void IconTile::paint(QPainter& painter, const QRectF& area, std::int64_t iconID) {
    paint(painter, area, EntryIcon::symbol(iconID), EntryIcon::tint(iconID));
}

void IconTile::paint(QPainter& painter, const QRectF& area, const QString& symbol, const QColor& tint) {
    const double side = area.width();
    Painting::roundedBox(painter, area, side < 28 ? Radius::small : (side < 40 ? Radius::control : Radius::card - 2),
                         Palette::withOpacity(tint, groundOpacity));
    // An even number of points, so that the drawing's middle falls on the tile's.
    const int drawing = qRound(side * 0.27) * 2;
    Symbol::paint(painter,
                  QRectF(area.center().x() - drawing / 2.0, area.center().y() - drawing / 2.0, drawing, drawing),
                  symbol, tint);
}

void IconTile::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paint(painter, rect(), m_iconID);
}

SymbolTile::SymbolTile(const QString& symbol, const QColor& tint, int side, QWidget* parent)
    : QWidget(parent), m_symbol(symbol), m_tint(tint) {
    setFixedSize(side, side);
}

void SymbolTile::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    IconTile::paint(painter, rect(), m_symbol, m_tint);
}

BrandMark::BrandMark(int side, QWidget* parent) : QWidget(parent) {
    setFixedSize(side, side);
    Accessible::setRole(*this, QAccessible::Graphic);
    setAccessibleName(QStringLiteral("Brenvik"));
}

// Drawn on a grid of 52: a B whose upper bowl is a lock's eye.
void BrandMark::paint(QPainter& painter, const QRectF& area) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(area.topLeft());
    painter.scale(area.width() / 52, area.height() / 52);

    QLinearGradient ground(0, 0, 52, 52);
    ground.setColorAt(0, Palette::accent.lighter(118));
    ground.setColorAt(1, Palette::accent.darker(108));
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(0, 0, 52, 52), 13, 13);

    QPainterPath letter;
    letter.setFillRule(Qt::OddEvenFill);
    letter.moveTo(18, 10);
    letter.lineTo(28, 10);
    letter.cubicTo(33.5, 10, 37, 13.4, 37, 18);
    letter.cubicTo(37, 20.6, 36, 22.8, 34.4, 24.2);
    letter.cubicTo(37.4, 25.8, 39, 28.6, 39, 31.8);
    letter.cubicTo(39, 37.6, 34.8, 42, 28.6, 42);
    letter.lineTo(18, 42);
    letter.quadTo(15, 42, 15, 39);
    letter.lineTo(15, 13);
    letter.quadTo(15, 10, 18, 10);
    letter.closeSubpath();
    letter.addRoundedRect(QRectF(20.5, 15.5, 11, 6.5), 3.25, 3.25);
    letter.addRoundedRect(QRectF(20.5, 28, 13, 8), 4, 4);
    painter.setBrush(Palette::canvas);
    painter.drawPath(letter);
    painter.drawEllipse(QPointF(27.2, 18.75), 1.9, 1.9);
    painter.restore();
}

QIcon BrandMark::windowIcon() {
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(painter, pixmap.rect());
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

void BrandMark::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paint(painter, rect());
}
