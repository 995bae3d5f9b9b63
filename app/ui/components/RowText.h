// SPDX-License-Identifier: MIT
#pragma once

#include <QFontMetrics>
#include <QString>

#include <initializer_list>

/// Texts of a vault as a row shows them: they may be of any length and hold anything.
namespace RowText {

/// The beginning of a text on one line, with spaces for its line breaks. Longer than any row is wide, and short enough
/// to be measured at each paint.
[[nodiscard]] QString line(const QString& text);

/// The line as it fits into a width, by itself whatever direction it runs in.
[[nodiscard]] QString elided(const QString& text, const QFontMetrics& metrics, int width);

/// Of some texts that each have a width, those that do not fit into it, whole and one under the other.
struct Fit {
    QString text;
    QFontMetrics metrics;
    int width;
};
[[nodiscard]] QString cutOnes(std::initializer_list<Fit> texts);

}  // namespace RowText
