// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>
#include <QStringList>

class QPainter;
class QRectF;

/// The program's symbols by name, drawn from app/resources/Symbols.txt in any colour, sharp at every scale.
namespace Symbol {

/// Paints a symbol, as large as the shorter side of `area`, in its middle.
void paint(QPainter& painter, const QRectF& area, const QString& name, const QColor& colour);

/// An icon of a symbol; disabled it has an opacity of 0.4.
[[nodiscard]] QIcon icon(const QString& name, const QColor& colour);

/// Every name that has a drawing.
[[nodiscard]] QStringList names();

}  // namespace Symbol
