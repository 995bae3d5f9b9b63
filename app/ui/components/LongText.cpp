// SPDX-License-Identifier: MIT
#include "app/ui/components/LongText.h"

#include "app/ui/components/Texts.h"
#include "core/text/Text.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <cstring>

namespace {

constexpr qsizetype longestWord = 500;
constexpr std::size_t longestField = 16'000;
constexpr qsizetype longestArea = 3'000'000;
constexpr qsizetype longestEditedWord = 4000;
constexpr qsizetype longestEditedLine = 30'000;
constexpr std::size_t longestCluster = 256;  // of those that are not cut in two
constexpr std::size_t longestScalar = 4;
constexpr QChar ellipsis(0x2026);

bool hasRunLongerThan(qsizetype most, const QString& text, bool (*isEnd)(QChar)) {
    qsizetype length = 0;
    return std::any_of(text.begin(), text.end(), [&](QChar letter) {
        length = isEnd(letter) ? 0 : length + 1;
        return length > most;
    });
}

bool hasWordLongerThan(qsizetype most, const QString& text) {
    return hasRunLongerThan(most, text, [](QChar letter) { return letter.isSpace(); });
}

bool continuesScalar(std::string_view text, std::size_t offset) {
    return offset < text.size() && (static_cast<unsigned char>(text[offset]) & 0xc0U) == 0x80U;
}

/// The offset, or the nearest one before it where a scalar begins.
std::size_t startOfScalar(std::string_view text, std::size_t offset) {
    for (std::size_t back = 0; back < longestScalar && back <= offset; ++back)
        if (!continuesScalar(text, offset - back))
            return offset - back;
    return offset;  // no UTF-8
}

/// Where the byte is for the last time, or `npos`. The library's own search goes byte by byte.
std::size_t lastOf(char byte, std::string_view text) {
    const auto* const found = static_cast<const char*>(::memrchr(text.data(), byte, text.size()));
    return found != nullptr ? static_cast<std::size_t>(found - text.data()) : std::string_view::npos;
}

/// A flag is two letters of their own, so whether one begins a flag depends on how many stand before it.
bool isAmidFlag(std::string_view text, std::size_t offset) {
    std::size_t letters = 0;
    while (offset >= longestScalar && text.substr(offset - longestScalar, 3) == "\xF0\x9F\x87") {
        offset -= longestScalar;
        ++letters;
    }
    return letters % 2 == 1;
}

/// The offset, or the nearest one before it where a character begins. But for flags, what is far before has no say.
std::size_t startOfCharacter(std::string_view text, std::size_t offset) {
    auto start = offset > longestCluster ? startOfScalar(text, offset - longestCluster) : 0;
    if (isAmidFlag(text, start))
        start -= longestScalar;
    const auto end = startOfScalar(text, std::min(offset + 2 * longestScalar, text.size()));
    auto found = start;
    for (const auto character : Text::characters(text.substr(start, end - start))) {
        if (found + character.size() > offset)
            break;
        found += character.size();
    }
    return found > start ? found : startOfScalar(text, offset);
}

}  // namespace

QString LongText::beginning(const QString& text, qsizetype most) {
    if (text.size() <= most)
        return text;
    const QString around = text.left(most + static_cast<qsizetype>(longestScalar));
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, around);
    finder.setPosition(most);
    const auto end = finder.isAtBoundary() ? most : finder.toPreviousBoundary();
    if (end > 0)
        return text.left(end) + ellipsis;
    return text.left(text.at(most - 1).isHighSurrogate() ? most - 1 : most) + ellipsis;
}

QString LongText::beginning(std::string_view text, qsizetype most) {
    const auto bytes = longestScalar * static_cast<std::size_t>(most);  // more than the letters that are wanted
    return beginning(qtText(prefix(text, bytes)), most);
}

std::string_view LongText::prefix(std::string_view text, std::size_t most) {
    return text.size() <= most ? text : text.substr(0, startOfCharacter(text, most));
}

bool LongText::isTooLongForField(std::size_t size) {
    return size > longestField;
}

bool LongText::isTooLongForArea(const QString& text) {
    const auto endsLine = [](QChar letter) { return letter == QLatin1Char('\n') || letter == QLatin1Char('\r'); };
    return text.size() > longestArea || hasWordLongerThan(longestEditedWord, text) ||
           hasRunLongerThan(longestEditedLine, text, endsLine);
}

QString LongText::whyItIsKept() {
    return QStringLiteral(
        "Bu metin burada değiştirilemeyecek kadar uzun; olduğu gibi kalır. Yerine başka bir şey yazmak için "
        "önce tümünü seçip sil.");
}

QTextOption::WrapMode LongText::wrapMode(const QString& text) {
    return hasWordLongerThan(longestWord, text) ? QTextOption::WrapAnywhere : QTextOption::WrapAtWordBoundaryOrAnywhere;
}

std::vector<std::size_t> LongText::pagesOf(std::string_view text) {
    std::vector<std::size_t> pages{0};
    for (auto rest = text; rest.size() > pageBytes; rest = text.substr(pages.back())) {
        const auto half = rest.substr(pageBytes / 2, pageBytes / 2);
        auto end = lastOf('\n', half);
        if (end == std::string_view::npos)
            end = lastOf(' ', half);
        const auto wanted = end == std::string_view::npos ? pageBytes : pageBytes / 2 + end + 1;
        pages.push_back(pages.back() + startOfCharacter(rest, wanted));
    }
    return pages;
}
