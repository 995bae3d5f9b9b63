// SPDX-License-Identifier: MIT
#include "app/state/SearchText.h"

#include "core/text/Text.h"

#include <algorithm>
#include <array>

namespace {

template <class Visitor>
void forEachField(const KdbxEntry& entry, Visitor visit) {
    for (const auto* field : {&entry.title, &entry.username, &entry.url, &entry.notes})
        visit(*field);
    for (const auto& tag : entry.tags)
        visit(tag);
    for (const auto& [name, value] : entry.customFields) {
        if (entry.protectedCustomFields.contains(name))
            continue;
        visit(name);
        visit(value);
    }
}

std::string joined(const KdbxEntry& entry) {
    std::string text;
    text.reserve(SearchText::size(entry));
    forEachField(entry, [&](std::string_view field) { text.append(field).push_back(' '); });
    return text;
}

/// The small letters of the scalars below U+0180, each asked of `Text::lowercased` once. What a scalar becomes depends
/// on its neighbours in Greek alone, so that here texts are lowered one scalar after the other.
class LatinLetters {
public:
    LatinLetters() {
        for (unsigned scalar = 0; scalar < 0x80; ++scalar)
            m_ascii[scalar] = Text::lowercased(std::string(1, static_cast<char>(scalar))).front();
        for (unsigned scalar = 0x80; scalar < 0x180; ++scalar) {
            const std::string letter{static_cast<char>(0xc0 | scalar >> 6), static_cast<char>(0x80 | (scalar & 0x3f))};
            const auto small = Text::lowercased(letter);
            m_others[scalar - 0x80].size = static_cast<std::uint8_t>(small.size());
            std::ranges::copy(small, m_others[scalar - 0x80].bytes.begin());
        }
    }

    /// Writes the lowered text to `output`, which has room for twice the text, and returns its end. Null for a text
    /// with other scalars.
    [[nodiscard]] std::uint8_t* lower(std::string_view text, std::uint8_t* output) const {
        for (std::size_t i = 0; i < text.size(); ++i) {
            const auto byte = static_cast<std::uint8_t>(text[i]);
            if (byte < 0x80) {
                *output++ = static_cast<std::uint8_t>(m_ascii[byte]);
                continue;
            }
            if (byte < 0xc2 || byte > 0xc5 || i + 1 == text.size())
                return nullptr;
            const auto trail = static_cast<std::uint8_t>(text[++i]);
            if (trail >> 6 != 2)
                return nullptr;
            const auto& small = m_others[static_cast<std::size_t>(byte - 0xc2) << 6 | (trail & 0x3fU)];
            output = std::copy_n(small.bytes.begin(), small.size, output);
        }
        return output;
    }

private:
    struct Small {
        std::array<char, 3> bytes{};  // "İ" becomes an "i" with a combining dot
        std::uint8_t size = 0;
    };

    std::array<char, 0x80> m_ascii{};
    std::array<Small, 0x100> m_others{};
};

// Whether all of it was in Latin letters; if not, what was added means nothing.
bool appendLatin(Bytes& texts, std::string_view field) {
    static const LatinLetters letters;
    const auto begin = texts.size();
    texts.resize(begin + 2 * field.size() + 1);
    auto* end = letters.lower(field, texts.data() + begin);
    if (!end)
        return false;
    *end++ = ' ';
    texts.resize(static_cast<std::size_t>(end - texts.data()));
    return true;
}

}  // namespace

std::string SearchText::lowered(const KdbxEntry& entry) {
    return Text::lowercased(joined(entry));
}

std::size_t SearchText::size(const KdbxEntry& entry) {
    std::size_t size = 0;
    forEachField(entry, [&](std::string_view field) { size += field.size() + 1; });
    return size;
}

void SearchText::appendLowered(Bytes& texts, const KdbxEntry& entry) {
    const auto begin = texts.size();
    bool isLatin = true;
    forEachField(entry, [&](std::string_view field) { isLatin = isLatin && appendLatin(texts, field); });
    if (isLatin)
        return;
    const auto text = lowered(entry);
    texts.resize(begin + text.size());
    std::ranges::copy(text, texts.data() + begin);
}
