// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The order in which a person looks for names in a list: by the letters of a language first, then by accents, then by
/// case, small letters before capitals, and runs of digits by their value (Unicode Technical Standard #10, with the
/// tailorings of CLDR). Canonically equivalent texts are equal in it, and so are "7" and "007".
class Collation {
public:
    /// The order of a locale, named as the environment does ("tr_TR.UTF-8") or as CLDR does ("tr"). What is unknown
    /// gets the order that most languages share.
    explicit Collation(const std::string& locale);
    ~Collation();
    Collation(const Collation&) = delete;
    Collation& operator=(const Collation&) = delete;

    /// That of the user's locale, made once. See `localeOfUser`.
    [[nodiscard]] static const Collation& ofUser();

    [[nodiscard]] std::weak_ordering compare(std::string_view a, std::string_view b) const;

    /// Makes once what a long list is ordered by, some milliseconds' work, so that `order` need not.
    void prepare() const;

    /// The indices of the texts in ascending order. Equal texts keep theirs.
    [[nodiscard]] std::vector<std::uint32_t> order(std::span<const std::string_view> texts) const;

private:
    class Engine;
    std::unique_ptr<Engine> m_engine;
};

/// The locale's name that decides about order (POSIX.1-2017, section 8.2): the first that is set of these three, and
/// Turkish, the language of the interface, where that is none, "C" or "POSIX".
struct LocaleVariables {
    const char* lcAll;
    const char* lcCollate;
    const char* lang;
};
[[nodiscard]] std::string collationLocale(const LocaleVariables& variables);
