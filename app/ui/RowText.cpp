// SPDX-License-Identifier: MIT
#include "app/ui/RowText.h"

#include <algorithm>

namespace {

constexpr int mostLetters = 400;

bool breaksLine(QChar letter) {
    return letter.category() == QChar::Other_Control || letter == QChar::LineSeparator ||
           letter == QChar::ParagraphSeparator;
}

}  // namespace

QString RowText::line(const QString& text) {
    QString line = text.left(mostLetters);
    std::replace_if(line.begin(), line.end(), breaksLine, QLatin1Char(' '));
    return line;
}

QString RowText::elided(const QString& text, const QFontMetrics& metrics, int width) {
    return metrics.elidedText(line(text), Qt::ElideRight, width);
}
