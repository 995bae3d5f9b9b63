// SPDX-License-Identifier: MIT
#pragma once

#include <QFontMetrics>
#include <QString>

/// Texts of a vault as a row shows them: they may be of any length and hold anything.
namespace RowText {

/// The beginning of a text on one line, with spaces for its line breaks. Longer than any row is wide, and short enough
/// to be measured at each paint.
[[nodiscard]] QString line(const QString& text);

/// The line as it fits into a width.
[[nodiscard]] QString elided(const QString& text, const QFontMetrics& metrics, int width);

}  // namespace RowText
