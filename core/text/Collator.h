// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/ucol.h>

#include <compare>
#include <memory>
#include <string>
#include <string_view>

/// ICU's collator of a locale, in which runs of digits count by their value and canonically equivalent texts are equal.
class Collator {
public:
    /// A locale as `Collation` takes it. At `UCOL_PRIMARY` base letters count alone, at `UCOL_TERTIARY` also accents
    /// and case.
    Collator(const std::string& locale, UCollationStrength strength);

    [[nodiscard]] std::weak_ordering compare(std::string_view a, std::string_view b) const;

    [[nodiscard]] const UCollator* get() const noexcept { return m_collator.get(); }

    /// As much of a text as a collator looks at, so that one of megabytes holds up no list: what differs only behind
    /// this is equal.
    [[nodiscard]] static std::string_view clipped(std::string_view text) { return text.substr(0, 64UL << 10); }
    /// Its bytes.
    [[nodiscard]] static std::int32_t length(std::string_view text) {
        return static_cast<std::int32_t>(clipped(text).size());
    }

private:
    struct Closing {
        void operator()(UCollator* collator) const { ucol_close(collator); }
    };
    std::unique_ptr<UCollator, Closing> m_collator;
};
