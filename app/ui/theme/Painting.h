// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>
#include <QRegion>

/// The few shapes that everything is made of.
namespace Painting {

/// A filled rounded rectangle with a hairline inside its edge. An invalid colour is left out.
void roundedBox(QPainter& painter, const QRectF& box, double radius, const QColor& fill, const QColor& outline = {});

/// The soft shadow of a raised panel: `width` points around it, and moved down by `drop`. Strength is from 0 to 1.
void shadow(QPainter& painter, const QRectF& panel, double radius, int width, int drop, double strength = 1);

/// A line one device-independent point high, on whole device pixels.
void hairline(QPainter& painter, const QPointF& from, double length, Qt::Orientation orientation, const QColor& colour);

/// Gives the text cursor that Qt has painted in the text's colour the accent. What lies around it is darker than the
/// accent in every channel and stays as it is, and so does all of it while the cursor blinks.
void tintCaret(QPainter& painter, const QRectF& caret);

/// The shape of a window of its own with round corners. Where no compositor runs, what is clear of a window shows
/// black: the corners are cut off, a point outside of the round outline, so that a compositor still shows that one
/// smooth.
[[nodiscard]] QRegion withoutCorners(const QRect& panel, int radius);

}  // namespace Painting
