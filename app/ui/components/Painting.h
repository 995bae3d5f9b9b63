// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

/// The few shapes that everything is made of.
namespace Painting {

/// A filled rounded rectangle with a hairline inside its edge. An invalid colour is left out.
void roundedBox(QPainter& painter, const QRectF& box, double radius, const QColor& fill, const QColor& outline = {});

/// A line one device-independent point high, on whole device pixels.
void hairline(QPainter& painter, const QPointF& from, double length, Qt::Orientation orientation, const QColor& colour);

}  // namespace Painting
