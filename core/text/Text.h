// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Text is UTF-8 in `std::string`. Two texts that a user could have typed are compared here and never with `==`:
/// "ş" in one code point and in two is the same text (Unicode canonical equivalence, UAX #15), and a character is
/// what a person takes for one (grapheme cluster, UAX #29). ASCII takes a fast path that gives the same answers.
namespace Text {

/// Canonical equivalence.
[[nodiscard]] bool equal(std::string_view a, std::string_view b);

/// The order of the Unicode scalars of the canonically composed forms; `equal` texts are equivalent in it.
[[nodiscard]] std::weak_ordering compare(std::string_view a, std::string_view b);

/// A hash that agrees with `equal`.
[[nodiscard]] std::size_t hash(std::string_view text);

/// The characters (extended grapheme clusters), borrowed from `text`, in order.
[[nodiscard]] std::vector<std::string_view> characters(std::string_view text);

/// How many characters a person would count.
[[nodiscard]] std::size_t characterCount(std::string_view text);

/// Unicode's mappings with no language's exceptions: "I" and "İ" are lowered as everywhere, also for Turkish users.
[[nodiscard]] std::string lowercased(std::string_view text);
[[nodiscard]] std::string uppercased(std::string_view text);

/// Without white space at both ends: categories Zs, Zl, Zp, U+0009 to U+000D and U+0085.
[[nodiscard]] std::string_view trimmingWhitespaceAndNewlines(std::string_view text);

/// Without white space at both ends: category Zs and U+0009. Line breaks stay.
[[nodiscard]] std::string_view trimmingWhitespace(std::string_view text);

/// Whether a scalar is in the wider of the two sets.
[[nodiscard]] bool isWhitespaceOrNewline(char32_t scalar);

/// Strict: no overlong forms, no surrogates, nothing beyond U+10FFFF.
[[nodiscard]] bool isValidUTF8(std::span<const std::uint8_t> bytes);

/// The bytes as text, each ill-formed piece (its longest valid beginning, Unicode 15, section 3.9) becoming U+FFFD.
[[nodiscard]] std::string repairingUTF8(std::span<const std::uint8_t> bytes);

/// The order of `compare`, for maps and sets.
struct Less {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const { return compare(a, b) < 0; }
};

/// `equal`, for algorithms and hashed containers.
struct Equal {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const { return equal(a, b); }
};

struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return hash(text); }
};

/// Maps and sets whose keys are texts. Of two equal keys either spelling may stay.
template <class Value>
using Map = std::map<std::string, Value, Less>;
using Set = std::set<std::string, Less>;

}  // namespace Text
