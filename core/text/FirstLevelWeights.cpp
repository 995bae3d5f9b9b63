// SPDX-License-Identifier: MIT
#include "core/text/FirstLevelWeights.h"

#include <unicode/uchar.h>
#include <unicode/uset.h>

#include <algorithm>
#include <iterator>
#include <memory>

namespace {

struct Closing {
    void operator()(USet* set) const { uset_close(set); }
};
using Set = std::unique_ptr<USet, Closing>;

// A number takes two bytes and its digits. A longer one is left to the collator.
constexpr std::size_t mostDigits = 200;

/// The scalar of one or two bytes, and for any other zero, which has no weight.
char32_t scalarAt(std::string_view text, std::size_t index) {
    const auto lead = static_cast<std::uint8_t>(text[index]);
    if (lead < 0x80)
        return lead;
    if (lead < 0xc2 || lead > 0xc5 || index + 1 == text.size())
        return 0;
    const auto trail = static_cast<std::uint8_t>(text[index + 1]);
    return trail >> 6 == 2 ? (lead & 0x1fU) << 6 | (trail & 0x3fU) : 0;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view digitsAt(std::string_view text, std::size_t begin) {
    auto end = begin;
    while (end < text.size() && isDigit(text[end]))
        ++end;
    return text.substr(begin, end - begin);
}

std::string utf8(char32_t scalar) {
    if (scalar < 0x80)
        return {static_cast<char>(scalar)};
    return {static_cast<char>(0xc0 | scalar >> 6), static_cast<char>(0x80 | (scalar & 0x3f))};
}

bool isCandidate(char32_t scalar) {
    return scalar < 0x7f || u_isalpha(static_cast<UChar32>(scalar));
}

bool anyConsistsOf(const USet* contractions, const std::vector<char32_t>& letters) {
    for (std::int32_t item = 0; item < uset_getItemCount(contractions); ++item) {
        std::array<UChar, 64> text{};
        UChar32 first = 0;
        UChar32 last = 0;
        UErrorCode status = U_ZERO_ERROR;
        const auto size = uset_getItem(contractions, item, &first, &last, text.data(), text.size(), &status);
        const auto isLetter = [&](UChar unit) { return std::ranges::find(letters, unit) != letters.end(); };
        if (size > 0 && U_SUCCESS(status) && std::all_of(text.begin(), text.begin() + size, isLetter))
            return true;
    }
    return false;
}

}  // namespace

FirstLevelWeights::FirstLevelWeights(const std::string& locale) : m_collator(locale, UCOL_PRIMARY) {
    auto letters = lettersWithOneWeight();
    std::ranges::sort(letters, [this](char32_t a, char32_t b) { return compare(a, b) < 0; });
    if (!letters.empty() && areDigitsTogether(letters))
        number(letters);
}

std::uint8_t* FirstLevelWeights::writeKey(std::string_view text, std::uint8_t* out) const {
    for (std::size_t i = 0; i < text.size();) {
        if (const auto weight = m_plainWeights[static_cast<std::uint8_t>(text[i])]) {
            *out++ = weight;
            ++i;
            continue;
        }
        if (isDigit(text[i])) {
            const auto digits = digitsAt(text, i);
            out = writeNumber(digits, out);
            if (!out)
                return nullptr;
            i += digits.size();
            continue;
        }
        const auto scalar = scalarAt(text, i);
        if (m_weights[scalar] == 0)
            return nullptr;
        *out++ = m_weights[scalar];
        i += scalar < 0x80 ? 1 : 2;
    }
    return out;
}

// More digits are a greater number once leading zeros are gone.
std::uint8_t* FirstLevelWeights::writeNumber(std::string_view digits, std::uint8_t* out) const {
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    if (digits.size() > mostDigits || m_weights['0'] == 0)
        return nullptr;
    *out++ = m_weights['0'];
    *out++ = static_cast<std::uint8_t>(digits.size() + 1);
    return std::ranges::copy(digits, out).out;
}

std::weak_ordering FirstLevelWeights::compare(char32_t a, char32_t b) const {
    return m_collator.compare(utf8(a), utf8(b));
}

// A letter that counts as two ("æ") is left out, one with an accent is not: that has no weight at this level.
// None at all where letters in a row have an order of their own ("ch").
std::vector<char32_t> FirstLevelWeights::lettersWithOneWeight() const {
    const Set contractions(uset_openEmpty());
    const Set expansions(uset_openEmpty());
    UErrorCode status = U_ZERO_ERROR;
    ucol_getContractionsAndExpansions(m_collator.get(), contractions.get(), expansions.get(), true, &status);

    std::vector<char32_t> letters;
    std::vector<char32_t> expanding;
    for (char32_t scalar = ' '; scalar < tableEnd; ++scalar) {
        if (!isCandidate(scalar) || m_collator.compare(utf8(scalar), "") == 0)
            continue;
        const bool expands = uset_contains(expansions.get(), static_cast<UChar32>(scalar));
        (expands ? expanding : letters).push_back(scalar);
    }
    const auto single = letters;
    std::ranges::copy_if(expanding, std::back_inserter(letters), [&](char32_t accented) {
        return std::ranges::any_of(single, [&](char32_t base) { return compare(accented, base) == 0; });
    });
    if (U_FAILURE(status) || anyConsistsOf(contractions.get(), letters))
        letters.clear();
    return letters;
}

// Numbers share one weight, which no other letter may have or divide.
bool FirstLevelWeights::areDigitsTogether(const std::vector<char32_t>& letters) const {
    const auto zero = std::ranges::find(letters, U'0');
    for (char32_t digit = '0'; digit <= '9'; ++digit)
        if (letters.end() - zero <= static_cast<std::ptrdiff_t>(digit - '0') || zero[digit - '0'] != digit)
            return false;
    const auto after = zero + 10;
    return (zero == letters.begin() || compare(zero[-1], '0') < 0) &&
           (after == letters.end() || compare('9', *after) < 0);
}

void FirstLevelWeights::number(const std::vector<char32_t>& sorted) {
    std::uint8_t weight = 1;
    for (std::size_t i = 0; i < sorted.size() && weight < UINT8_MAX; ++i) {
        const bool isFurtherDigit = sorted[i] > '0' && sorted[i] <= '9';
        if (i > 0 && !isFurtherDigit && compare(sorted[i - 1], sorted[i]) != 0)
            ++weight;
        m_weights[sorted[i]] = weight;
    }
    std::copy_n(m_weights.begin(), 0x80, m_plainWeights.begin());
    std::fill_n(&m_plainWeights['0'], 10, std::uint8_t{0});
}
