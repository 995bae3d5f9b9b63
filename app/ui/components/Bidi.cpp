// SPDX-License-Identifier: MIT
#include "app/ui/components/Bidi.h"

namespace {

constexpr QChar firstStrongIsolate(0x2068);
constexpr QChar popIsolate(0x2069);
constexpr QChar openingQuote(0x201C);
constexpr QChar closingQuote(0x201D);

/// Whether a letter can turn what is beside it.
bool turns(char32_t letter) {
    switch (QChar::direction(letter)) {
        case QChar::DirR:
        case QChar::DirAL:
        case QChar::DirLRE:
        case QChar::DirLRO:
        case QChar::DirRLE:
        case QChar::DirRLO:
        case QChar::DirPDF:
        case QChar::DirLRI:
        case QChar::DirRLI:
        case QChar::DirFSI:
        case QChar::DirPDI:
            return true;
        default:
            return false;
    }
}

bool turns(const QString& text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isPair = text[i].isHighSurrogate() && i + 1 < text.size();
        if (turns(isPair ? QChar::surrogateToUcs4(text[i], text[i + 1]) : text[i].unicode()))
            return true;
    }
    return false;
}

bool opensIsolate(QChar letter) {
    const auto direction = letter.direction();
    return direction == QChar::DirLRI || direction == QChar::DirRLI || direction == QChar::DirFSI;
}

}  // namespace

QString Bidi::isolated(const QString& text) {
    if (!turns(text))
        return text;
    QString isolated(firstStrongIsolate);
    int depth = 0;
    for (const QChar letter : text) {
        if (letter == popIsolate && depth == 0)
            continue;  // it would end ours
        depth += opensIsolate(letter) ? 1 : (letter == popIsolate ? -1 : 0);
        isolated += letter;
    }
    return isolated + QString(depth + 1, popIsolate);
}

QString Bidi::withQuotesIsolated(const QString& sentence) {
    if (!turns(sentence))
        return sentence;
    QString result;
    qsizetype done = 0;
    for (auto start = sentence.indexOf(openingQuote); start >= 0; start = sentence.indexOf(openingQuote, done)) {
        const auto end = sentence.indexOf(closingQuote, start);
        if (end < 0)
            break;
        result += QStringView(sentence).mid(done, start + 1 - done);
        result += isolated(sentence.mid(start + 1, end - start - 1));
        done = end;
    }
    return result += QStringView(sentence).mid(done);
}
