// SPDX-License-Identifier: MIT
#pragma once

#include "core/generator/UniformIndex.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Random passwords, and an estimate of how hard a password is to guess.
namespace PasswordGenerator {

/// Without the double quote, the apostrophe, the backslash and the backtick, which shells and forms stumble over.
inline constexpr std::string_view upperChars = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
inline constexpr std::string_view lowerChars = "abcdefghijklmnopqrstuvwxyz";
inline constexpr std::string_view digitChars = "0123456789";
inline constexpr std::string_view symbolChars = "!#$%&()*+,-./:;<=>?@[]^_{|}~";

/// Characters that look alike in some typefaces. The last three are in none of the classes.
inline constexpr std::string_view ambiguousChars = "O0oIl1|`'\"";

/// The lengths that the user can choose.
inline constexpr std::int64_t shortestChoice = 6;
inline constexpr std::int64_t longestChoice = 128;

/// What the user asks of a password. As it is made, it holds the defaults.
struct Options {
    std::int64_t length = 20;
    bool upper = true;
    bool lower = true;
    bool digits = true;
    bool symbols = true;
    bool excludeAmbiguous = false;

    /// The characters of each chosen class, in the order upper, lower, digits, symbols.
    [[nodiscard]] std::vector<std::string> characterClasses() const;

    friend bool operator==(const Options&, const Options&) = default;
};

/// A random password: at least one character of each class, as far as `length` goes, in random order.
/// Empty when no class is chosen or `length` is below 1. The caller owns the secret, and wipes it where it can.
[[nodiscard]] std::string generate(const Options& options, const RandomSource& random = systemRandom);

/// How hard a password is to guess.
struct Strength {
    std::int64_t score = 0;  // 0 to 100
    double entropyBits = 0;
    friend bool operator==(const Strength&, const Strength&) = default;
};

/// A rule-based estimate: the size of the pool that the characters come from, less what repeats, sequences and keyboard
/// runs give away, with a ceiling for forms of well-known passwords. Linear in the length of the text.
[[nodiscard]] Strength strength(std::string_view password);

}  // namespace PasswordGenerator
