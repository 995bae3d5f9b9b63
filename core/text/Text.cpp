// SPDX-License-Identifier: MIT
#include "core/text/Text.h"

#include "core/text/TextICU.h"
#include "core/text/TextUTF8.h"

#include <algorithm>

namespace {

using TextUTF8::isASCII;

// The first combining mark. Below it every scalar is a character of its own, whatever is beside it there, but for
// a carriage return with its line feed, and no scalar changes by composition with one of these.
constexpr char32_t firstCombining = 0x300;

std::weak_ordering orderOf(int comparison) {
    return comparison <=> 0;
}

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// Where the scalars begin in which two different texts differ first: what precedes them is the same in both.
std::size_t firstDifference(std::string_view a, std::string_view b) {
    const auto common = std::min(a.size(), b.size());
    std::size_t offset = 0;
    while (offset < common && a[offset] == b[offset])
        ++offset;
    const auto isInsideAScalar = [offset](std::string_view text, std::size_t start) {
        return offset < text.size() && isContinuation(text[offset]) && isContinuation(text[start]);
    };
    auto start = offset;
    while (start > 0 && offset - start < 3 && (isInsideAScalar(a, start) || isInsideAScalar(b, start)))
        --start;
    return start;
}

/// Whether the text ends at `offset`, or goes on there with a scalar that composition leaves alone on both sides.
bool isSettled(std::string_view text, std::size_t offset) {
    for (int count = 0; count < 2 && offset < text.size(); ++count) {
        const auto scalar = TextUTF8::next(text, offset);
        if (scalar.value >= firstCombining)
            return false;
        offset += scalar.length;
    }
    return true;
}

bool isWhitespace(char32_t scalar) {
    return scalar == '\t' || scalar == ' ' || scalar == 0xA0 || scalar == 0x1680 ||
           (scalar >= 0x2000 && scalar <= 0x200A) || scalar == 0x202F || scalar == 0x205F || scalar == 0x3000;
}

/// Where the scalar or ill-formed byte that ends at `end` begins.
std::size_t startOfLast(std::string_view text, std::size_t end) {
    for (std::size_t length = 1; length <= 4 && length <= end; ++length)
        if (const auto scalar = TextUTF8::next(text.substr(0, end), end - length);
            scalar.isWellFormed && scalar.length == length)
            return end - length;
    return end - 1;
}

template <class Predicate>
std::string_view trimming(std::string_view text, Predicate isTrimmed) {
    std::size_t begin = 0;
    while (begin < text.size()) {
        const auto scalar = TextUTF8::next(text, begin);
        if (!isTrimmed(scalar.value))
            break;
        begin += scalar.length;
    }
    auto end = text.size();
    while (end > begin) {
        const auto start = startOfLast(text, end);
        if (!isTrimmed(TextUTF8::next(text, start).value))
            break;
        end = start;
    }
    return text.substr(begin, end - begin);
}

template <class Mapping>
std::string mappingASCII(std::string_view text, Mapping mapping) {
    std::string mapped(text);
    std::ranges::transform(mapped, mapped.begin(), mapping);
    return mapped;
}

/// Whether no composition changes the text: then its bytes are its composed form's.
bool isPlain(std::string_view text) {
    for (auto offset = TextUTF8::asciiPrefix(text); offset < text.size();) {
        const auto scalar = TextUTF8::next(text, offset);
        if (scalar.value >= firstCombining)
            return false;
        offset += scalar.length;
    }
    return true;
}

/// Where the stretch that begins at `offset` ends: between the first two scalars below the combining marks that are
/// side by side, which is a boundary of characters whatever surrounds it, but for a line break.
std::size_t endOfStretch(std::string_view text, std::size_t offset) {
    auto scalar = TextUTF8::next(text, offset);
    for (;;) {
        offset += scalar.length;
        if (offset == text.size())
            return offset;
        const auto following = TextUTF8::next(text, offset);
        const auto isLineBreak = scalar.value == '\r' && following.value == '\n';
        if (scalar.value < firstCombining && following.value < firstCombining && !isLineBreak)
            return offset;
        scalar = following;
    }
}

/// Hands each character to `visit`, in order. Only stretches with scalars from the combining marks on go to ICU.
template <class Visit>
void visitCharacters(std::string_view text, Visit visit) {
    std::vector<std::string_view> ofStretch;
    for (std::size_t offset = 0; offset < text.size();) {
        const auto end = endOfStretch(text, offset);
        const auto stretch = text.substr(offset, end - offset);
        if (TextUTF8::next(stretch, 0).length == stretch.size() || stretch == "\r\n") {
            visit(stretch);
        } else {
            ofStretch.clear();
            TextICU::appendCharacters(ofStretch, stretch);
            std::ranges::for_each(ofStretch, visit);
        }
        offset = end;
    }
}

}  // namespace

namespace Text {

bool equal(std::string_view a, std::string_view b) {
    return a == b || compare(a, b) == 0;
}

std::weak_ordering compare(std::string_view a, std::string_view b) {
    const auto difference = firstDifference(a, b);
    if (isSettled(a, difference) && isSettled(b, difference))
        return orderOf(a.compare(b));
    return orderOf(TextICU::composed(a).compare(TextICU::composed(b)));
}

std::size_t hash(std::string_view text) {
    const std::hash<std::string_view> hashOfBytes;
    return isPlain(text) ? hashOfBytes(text) : hashOfBytes(TextICU::composed(text));
}

std::vector<std::string_view> characters(std::string_view text) {
    std::vector<std::string_view> characters;
    visitCharacters(text, [&](std::string_view character) { characters.push_back(character); });
    return characters;
}

std::size_t characterCount(std::string_view text) {
    std::size_t count = 0;
    visitCharacters(text, [&](std::string_view) { ++count; });
    return count;
}

std::string lowercased(std::string_view text) {
    if (!isASCII(text))
        return TextICU::lowercased(text);
    return mappingASCII(text, [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
}

std::string uppercased(std::string_view text) {
    if (!isASCII(text))
        return TextICU::uppercased(text);
    return mappingASCII(text, [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; });
}

std::string_view trimmingWhitespaceAndNewlines(std::string_view text) {
    return trimming(text, isWhitespaceOrNewline);
}

std::string_view trimmingWhitespace(std::string_view text) {
    return trimming(text, isWhitespace);
}

bool isWhitespaceOrNewline(char32_t scalar) {
    return isWhitespace(scalar) || (scalar >= 0x0A && scalar <= 0x0D) || scalar == 0x85 || scalar == 0x2028 ||
           scalar == 0x2029;
}

}  // namespace Text
