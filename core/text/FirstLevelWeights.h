// SPDX-License-Identifier: MIT
#pragma once

#include "core/text/Collator.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The weights of the letters, digits and signs of which most titles consist, found by asking the collator.
///
/// A text of these alone has a key whose order is that of the collator at its first level, where base letters count
/// and neither accents nor case do. It takes a tenth of the time that the collator needs for its own, so that a list of
/// 100,000 titles is in order in 28 ms instead of 50. Where keys are equal, the collator decides.
class FirstLevelWeights {
public:
    explicit FirstLevelWeights(const std::string& locale);

    /// Writes the key of a text to `out`, which has room for three times the text, and returns its end. None for a text
    /// with other scalars. No byte of a key is zero.
    [[nodiscard]] std::uint8_t* writeKey(std::string_view text, std::uint8_t* out) const;

private:
    // The first scalar that has no weight in the table: ASCII, Latin-1 and Latin Extended-A are before it.
    static constexpr char32_t tableEnd = 0x180;

    [[nodiscard]] std::uint8_t* writeNumber(std::string_view digits, std::uint8_t* out) const;
    [[nodiscard]] std::weak_ordering compare(char32_t a, char32_t b) const;
    [[nodiscard]] std::vector<char32_t> lettersWithOneWeight() const;
    [[nodiscard]] bool areDigitsTogether(const std::vector<char32_t>& letters) const;
    void number(const std::vector<char32_t>& sorted);

    Collator m_collator;
    std::array<std::uint8_t, tableEnd> m_weights{};    // 0: not in the table
    std::array<std::uint8_t, 0x100> m_plainWeights{};  // of the bytes that are a letter or a sign each, and no digit
};
