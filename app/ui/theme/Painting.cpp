// SPDX-License-Identifier: MIT
#include "app/ui/theme/Painting.h"

#include "app/ui/theme/Theme.h"

#include <QPainterPath>

#include <algorithm>

namespace Painting {

void roundedBox(QPainter& painter, const QRectF& box, double radius, const QColor& fill, const QColor& outline) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    // The outline's middle lies half a point inside, so that its outer edge is the box's.
    const double inset = outline.isValid() ? Metric::hairline / 2.0 : 0;
    const QRectF edge = box.adjusted(inset, inset, -inset, -inset);
    const double corner = std::min({radius, edge.width() / 2, edge.height() / 2});
    painter.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    painter.setPen(outline.isValid() ? QPen(outline, Metric::hairline) : QPen(Qt::NoPen));
    painter.drawRoundedRect(edge, corner, corner);
    painter.restore();
}

void shadow(QPainter& painter, const QRectF& panel, double radius, int width, int drop, double strength) {
    // Layers that lie over one another are the darker, the nearer to the panel.
    for (int i = width; i > 0; i -= 2) {
        const double share = 1.0 - double(i) / width;
        roundedBox(painter, panel.adjusted(-i, -i + drop, i, i + drop), radius + i,
                   Palette::withOpacity(Qt::black, 0.06 * share * strength));
    }
}

void hairline(QPainter& painter, const QPointF& from, double length, Qt::Orientation orientation,
              const QColor& colour) {
    const QSizeF size =
        orientation == Qt::Horizontal ? QSizeF(length, Metric::hairline) : QSizeF(Metric::hairline, length);
    painter.fillRect(QRectF(from, size), colour);
}

void tintCaret(QPainter& painter, const QRectF& caret) {
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_Darken);
    painter.fillRect(caret, Palette::accent);
    painter.restore();
}

QRegion withoutCorners(const QRect& panel, int radius) {
    QPainterPath outline;
    outline.addRoundedRect(panel, radius - 1, radius - 1);
    return outline.toFillPolygon().toPolygon();
}

}  // namespace Painting
