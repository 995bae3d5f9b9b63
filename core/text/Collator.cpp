// SPDX-License-Identifier: MIT
#include "core/text/Collator.h"

#include "core/primitives/Precondition.h"

#include <unicode/uloc.h>

#include <array>

namespace {

// The environment writes a script behind an @, where CLDR has it in the middle.
std::string namedAsInCLDR(const std::string& locale) {
    const auto language = locale.substr(0, locale.find_first_of("_-.@"));
    if (locale.ends_with("@latin"))
        return language + "_Latn";
    if (locale.ends_with("@cyrillic"))
        return language + "_Cyrl";
    std::array<char, ULOC_FULLNAME_CAPACITY> name{};
    UErrorCode status = U_ZERO_ERROR;
    uloc_canonicalize(locale.c_str(), name.data(), ULOC_FULLNAME_CAPACITY - 1, &status);
    return U_SUCCESS(status) ? name.data() : "";
}

}  // namespace

Collator::Collator(const std::string& locale, UCollationStrength strength) {
    UErrorCode status = U_ZERO_ERROR;
    m_collator.reset(ucol_open(namedAsInCLDR(locale).c_str(), &status));
    if (U_FAILURE(status)) {
        status = U_ZERO_ERROR;
        m_collator.reset(ucol_open("", &status));
    }
    precondition(U_SUCCESS(status));  // the order that most languages share is part of ICU's library
    ucol_setAttribute(m_collator.get(), UCOL_STRENGTH, static_cast<UColAttributeValue>(strength), &status);
    ucol_setAttribute(m_collator.get(), UCOL_NUMERIC_COLLATION, UCOL_ON, &status);
    ucol_setAttribute(m_collator.get(), UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
    precondition(U_SUCCESS(status));  // every collator has these attributes
}

std::weak_ordering Collator::compare(std::string_view a, std::string_view b) const {
    UErrorCode status = U_ZERO_ERROR;
    return ucol_strcollUTF8(m_collator.get(), a.data(), length(a), b.data(), length(b), &status) <=> 0;
}
