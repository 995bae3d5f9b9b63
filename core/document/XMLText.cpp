// SPDX-License-Identifier: MIT
#include "core/document/XMLText.h"

#include "core/model/SecureString.h"
#include "core/text/Text.h"

#include <algorithm>
#include <array>

namespace XMLText {
namespace {

/// What becomes of a byte.
enum class Fate : std::uint8_t {
    stays,
    goes,
    ampersand,
    less,
    greater,
    quotationMark,
    lineFeed,
    carriageReturn,
    mayOpenNoncharacter,  // U+FFFE and U+FFFF are EF BF BE and EF BF BF
};
using Fates = std::array<Fate, 256>;

constexpr Fates fatesWhenSanitising = [] {
    Fates fates{};
    for (std::size_t control = 0; control < 0x20; ++control)
        fates[control] = Fate::goes;
    fates['\t'] = fates['\n'] = fates['\r'] = Fate::stays;
    fates[0xEF] = Fate::mayOpenNoncharacter;
    return fates;
}();

constexpr Fates fatesInContent = [] {
    Fates fates = fatesWhenSanitising;
    fates['&'] = Fate::ampersand;
    fates['<'] = Fate::less;
    fates['>'] = Fate::greater;
    return fates;
}();

constexpr Fates fatesInAttributes = [] {
    Fates fates = fatesInContent;
    fates['"'] = Fate::quotationMark;
    fates['\n'] = Fate::lineFeed;
    fates['\r'] = Fate::carriageReturn;
    return fates;
}();

constexpr std::string_view replacement(Fate fate) {
    switch (fate) {
        case Fate::ampersand:
            return "&amp;";
        case Fate::less:
            return "&lt;";
        case Fate::greater:
            return "&gt;";
        case Fate::quotationMark:
            return "&quot;";
        case Fate::lineFeed:
            return "&#xA;";
        case Fate::carriageReturn:
            return "&#xD;";
        default:
            return {};
    }
}

Fate fateOf(char character, const Fates& fates) {
    return fates[static_cast<std::uint8_t>(character)];
}

bool opensNoncharacter(std::string_view text) {
    return text.starts_with("\xEF\xBF\xBE") || text.starts_with("\xEF\xBF\xBF");
}

void appendValid(WipingText& out, std::string_view text, const Fates& fates) {
    while (!text.empty()) {
        const auto end = std::ranges::find_if(text, [&](char c) { return fateOf(c, fates) != Fate::stays; });
        const auto run = static_cast<std::size_t>(end - text.begin());
        out.append(text.substr(0, run));
        text.remove_prefix(run);
        if (text.empty())
            return;
        const auto fate = fateOf(text.front(), fates);
        if (fate != Fate::mayOpenNoncharacter) {
            out.append(replacement(fate));
            text.remove_prefix(1);
            continue;
        }
        if (!opensNoncharacter(text))
            out.append(text.substr(0, 3));
        text.remove_prefix(3);
    }
}

/// A text of the model is well-formed. Should one not be, the document must be all the same.
void append(WipingText& out, std::string_view text, const Fates& fates) {
    if (Text::isValidUTF8(bytesOf(text)))
        return appendValid(out, text, fates);
    auto repaired = Text::repairingUTF8(bytesOf(text));
    appendValid(out, repaired, fates);
    wipe(repaired);
}

}  // namespace

void appendContent(WipingText& out, std::string_view text) {
    append(out, text, fatesInContent);
}

void appendAttributeValue(WipingText& out, std::string_view text) {
    append(out, text, fatesInAttributes);
}

void appendSanitised(WipingText& out, std::string_view text) {
    append(out, text, fatesWhenSanitising);
}

}  // namespace XMLText
