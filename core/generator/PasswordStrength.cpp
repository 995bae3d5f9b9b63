// SPDX-License-Identifier: MIT
#include "core/generator/PasswordGenerator.h"
#include "core/primitives/Bytes.h"
#include "core/text/Text.h"
#include "core/text/TextICU.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <unordered_set>

namespace PasswordGenerator {

namespace {

using Characters = std::vector<std::string_view>;
using Scalars = std::vector<UChar32, WipingAllocator<UChar32>>;

constexpr std::array<std::string_view, 6> keyboardRows{"qwertyuiop", "asdfghjkl",  "zxcvbnm",
                                                       "1234567890", "qwertzuiop", "azertyuiop"};

const std::unordered_set<std::string_view, Text::Hash, Text::Equal>& commonPasswords() {
    static const std::unordered_set<std::string_view, Text::Hash, Text::Equal> passwords{
        "password", "passw0rd", "123456", "12345678", "123456789",   "1234567890", "qwerty",   "qwertyuiop", "abc123",
        "111111",   "123123",   "admin",  "letmein",  "welcome",     "monkey",     "dragon",   "iloveyou",   "sunshine",
        "princess", "football", "master", "login",    "starwars",    "trustno1",   "superman", "baseball",   "shadow",
        "parola",   "sifre",    "þifre",  "sifre123", "galatasaray", "fenerbahce", "besiktas"};
    return passwords;
}

/// A text made from a password, overwritten when it goes.
class DerivedText {
public:
    explicit DerivedText(std::string text) : m_text(std::move(text)) {}
    DerivedText(const DerivedText&) = delete;
    DerivedText& operator=(const DerivedText&) = delete;
    ~DerivedText() { secureWipe(m_text.data(), m_text.size()); }

    [[nodiscard]] std::string_view view() const { return m_text; }

private:
    std::string m_text;
};

UChar32 firstScalar(std::string_view character) {
    UChar32 scalar = 0;
    std::size_t next = 0;
    U8_NEXT_OR_FFFD(character, next, character.size(), scalar);
    return scalar;
}

Scalars firstScalars(const Characters& characters) {
    Scalars scalars(characters.size());
    std::ranges::transform(characters, scalars.begin(), firstScalar);
    return scalars;
}

// How many different characters the password could have been drawn from.
double poolSize(const Characters& characters) {
    const Scalars scalars = firstScalars(characters);
    const auto any = [&](const auto& isOne) { return std::ranges::any_of(scalars, isOne); };
    const auto anyOf = [&](std::uint32_t categories) {
        return any([&](UChar32 scalar) { return (U_GET_GC_MASK(scalar) & categories) != 0; });
    };

    double pool = 0;
    if (anyOf(U_GC_LL_MASK))
        pool += 26;
    if (anyOf(U_GC_LU_MASK))
        pool += 26;
    // A numeral of any script counts, so "三" does as well as "3".
    if (any([](UChar32 scalar) { return u_getIntPropertyValue(scalar, UCHAR_NUMERIC_TYPE) != U_NT_NONE; }))
        pool += 10;
    // The symbols of the generator's table are all among these.
    if (anyOf(U_GC_P_MASK | U_GC_S_MASK))
        pool += 28;
    // By bytes: the pair of carriage return and line feed is one character, and ASCII.
    if (std::ranges::any_of(characters, [](std::string_view character) {
            return std::ranges::any_of(character, [](char byte) { return static_cast<unsigned char>(byte) > 0x7F; });
        }))
        pool += 100;
    return std::max(pool, 2.0);
}

std::size_t distinctCount(const Characters& characters) {
    return std::unordered_set<std::string_view, Text::Hash, Text::Equal>(characters.begin(), characters.end()).size();
}

// The length of the longest stretch of adjacent equal characters.
std::size_t longestRepeatRun(const Characters& characters) {
    std::size_t longest = 1;
    std::size_t run = 1;
    for (std::size_t i = 1; i < characters.size(); ++i) {
        run = Text::equal(characters[i - 1], characters[i]) ? run + 1 : 1;
        longest = std::max(longest, run);
    }
    return longest;
}

// How many characters are in runs of 3 or more neighbours of the alphabet, up or down. The turning point of two runs
// counts in both.
std::size_t sequentialCharacterCount(const Characters& characters) {
    if (characters.size() < 3)
        return 0;
    Scalars values = firstScalars(characters);
    std::ranges::transform(values, values.begin(), u_tolower);

    std::size_t total = 0;
    const std::size_t last = values.size() - 1;
    for (std::size_t i = 0; i < last;) {
        const auto step = values[i + 1] - values[i];
        std::size_t j = i + 1;
        if (step == 1 || step == -1) {
            while (j < last && values[j + 1] - values[j] == step)
                ++j;
            if (j - i + 1 >= 3)
                total += j - i + 1;
        }
        i = j;
    }
    return total;
}

std::size_t longestRunInRow(std::string_view row, std::string_view password, std::size_t longest) {
    for (std::size_t start = 0; start < row.size(); ++start)
        for (std::size_t length = 3; start + length <= row.size(); ++length) {
            if (password.find(row.substr(start, length)) == std::string_view::npos)
                break;
            longest = std::max(longest, length);
        }
    return longest;
}

// The length of the longest stretch of a keyboard row, in either direction; 0 for none of 3 or more.
std::size_t keyboardRunLength(std::string_view lowercased) {
    // Composed, so that the "e" of an "é" in two code points is no key of a row.
    const DerivedText password(TextICU::composed(lowercased));
    std::size_t longest = 0;
    for (const auto row : keyboardRows) {
        longest = longestRunInRow(row, password.view(), longest);
        longest = longestRunInRow(std::string(row.rbegin(), row.rend()), password.view(), longest);
    }
    return longest;
}

std::string_view trimming(std::string_view text, std::string_view characters) {
    const auto first = text.find_first_not_of(characters);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(characters) - first + 1);
}

std::string_view withoutTrailingDigits(std::string_view text) {
    return text.substr(0, text.find_last_not_of("0123456789") + 1);  // 0 when there are digits alone
}

// The signs that people write for letters, as letters.
std::string undisguised(std::string_view text) {
    std::string result(text);
    constexpr std::string_view signs = "4@31!05$7";
    constexpr std::string_view letters = "aaeiiosst";
    for (char& character : result)
        if (const auto sign = signs.find(character); sign != std::string_view::npos)
            character = letters[sign];
    return result;
}

bool isShortNumber(std::string_view text) {
    return text.size() >= 4 && text.size() <= 8 && withoutTrailingDigits(text).empty();
}

// The most bits that a well-known form is worth, or nothing.
std::optional<double> commonPatternPenalty(std::string_view lowercased) {
    const auto& common = commonPasswords();
    if (common.contains(lowercased))
        return 8.0;
    // What is empty when it is trimmed is not in the set.
    if (common.contains(withoutTrailingDigits(trimming(lowercased, "!@#$%^&*()_+-=.,"))))
        return 16.0;
    const DerivedText plain(undisguised(lowercased));
    if (common.contains(withoutTrailingDigits(plain.view())))
        return 20.0;
    if (isShortNumber(lowercased))
        return 14.0;
    return std::nullopt;
}

double entropyBits(std::string_view password, const Characters& characters, std::size_t distinct) {
    const auto count = static_cast<double>(characters.size());
    const double bitsPerCharacter = std::log2(poolSize(characters));
    double entropy = bitsPerCharacter * count;

    const double variety = static_cast<double>(distinct) / count;
    if (variety < 1)
        entropy *= 0.65 * variety + 0.35;

    const std::size_t repeats = longestRepeatRun(characters);
    if (repeats >= 3)
        entropy -= 0.8 * bitsPerCharacter * static_cast<double>(repeats - 2);

    const DerivedText lowercased(Text::lowercased(password));
    const std::size_t patterns = sequentialCharacterCount(characters) + keyboardRunLength(lowercased.view());
    entropy -= 0.6 * bitsPerCharacter * static_cast<double>(patterns);

    if (const auto ceiling = commonPatternPenalty(lowercased.view()))
        entropy = std::min(entropy, *ceiling);
    return std::max(entropy, 0.0);
}

std::int64_t uncappedScore(double entropy) {
    if (entropy >= 128)
        return 100;
    return std::clamp<std::int64_t>(std::llround(entropy / 100 * 100), 0, 100);
}

}  // namespace

Strength strength(std::string_view password) {
    if (password.empty())
        return {};
    const Characters characters = Text::characters(password);
    const std::size_t distinct = distinctCount(characters);

    const double entropy = entropyBits(password, characters, distinct);
    std::int64_t score = uncappedScore(entropy);
    if (characters.size() <= 5)
        score = std::min<std::int64_t>(score, 20);
    else if (characters.size() <= 7)
        score = std::min<std::int64_t>(score, 40);
    if (distinct < 3)
        score = std::min<std::int64_t>(score, 10);
    return {.score = score, .entropyBits = entropy};
}

}  // namespace PasswordGenerator
