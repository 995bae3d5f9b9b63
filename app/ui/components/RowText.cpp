// SPDX-License-Identifier: MIT
#include "app/ui/components/RowText.h"

#include "app/ui/components/Bidi.h"

#include <QStringList>

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
    return Bidi::isolated(metrics.elidedText(line(text), Qt::ElideRight, width));
}

QString RowText::cutOnes(std::initializer_list<Fit> texts) {
    QStringList cut;
    for (const auto& [text, metrics, width] : texts)
        if (const auto whole = line(text); metrics.elidedText(whole, Qt::ElideRight, width) != whole)
            cut += text;
    return cut.join(QLatin1Char('\n'));
}
