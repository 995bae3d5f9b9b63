// SPDX-License-Identifier: MIT
#include "core/text/Collation.h"

#include "core/text/Collator.h"
#include "core/text/FirstLevelWeights.h"
#include "core/text/KeyedTexts.h"

#include <unicode/ustring.h>

#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <new>
#include <optional>

namespace {

// For fewer texts the collator's own keys are made before the table of weights is.
constexpr std::size_t worthTable = 2000;

// What is read so many steps later is fetched now, where it lies scattered: to wait for each takes longer than to read
// it.
constexpr std::size_t ahead = 16;

bool namesNoLanguage(std::string_view locale) {
    const auto name = locale.substr(0, locale.find_first_of(".@"));
    return name.empty() || name == "C" || name == "POSIX";
}

}  // namespace

class Collation::Engine {
public:
    explicit Engine(const std::string& locale) : m_locale(locale), m_collator(locale, UCOL_TERTIARY) {}

    [[nodiscard]] std::weak_ordering compare(std::string_view a, std::string_view b) const {
        return m_collator.compare(a, b);
    }

    const FirstLevelWeights& firstLevel() {
        std::call_once(m_firstLevelMade, [this] { m_firstLevel.emplace(m_locale); });
        return *m_firstLevel;
    }

    [[nodiscard]] std::vector<std::uint32_t> order(std::span<const std::string_view> texts) {
        const auto* weights = texts.size() < worthTable ? nullptr : &firstLevel();
        const auto compareTwo = [&](std::uint32_t a, std::uint32_t b) {
            return texts[a] == texts[b] ? std::weak_ordering::equivalent : compare(texts[a], texts[b]);
        };
        std::size_t bytes = 0;
        std::size_t longest = 0;
        for (const auto text : texts) {
            bytes += Collator::clipped(text).size();
            longest = std::max(longest, Collator::clipped(text).size());
        }
        const auto fetch = [&](std::size_t i) { __builtin_prefetch(texts[i].data()); };
        KeyedTexts common(texts.size(), bytes + 3 * longest);
        KeyedTexts others;
        std::vector<UChar> utf16;
        for (std::uint32_t i = 0; i < texts.size(); ++i) {
            if (i + ahead < texts.size())
                fetch(i + ahead);
            if (!weights || !addCommon(common, *weights, Collator::clipped(texts[i]), i))
                addOther(others, Collator::clipped(texts[i]), i, utf16);
        }

        const auto commonOrder = common.order(compareTwo, fetch);
        const auto otherOrder = others.order([](auto, auto) { return std::weak_ordering::equivalent; }, [](auto) {});
        if (otherOrder.empty())
            return commonOrder;
        std::vector<std::uint32_t> merged(texts.size());
        std::ranges::merge(commonOrder, otherOrder, merged.begin(), [&](std::uint32_t a, std::uint32_t b) {
            const auto order = compareTwo(a, b);
            return order != 0 ? order < 0 : a < b;
        });
        return merged;
    }

private:
    static bool addCommon(KeyedTexts& keyed, const FirstLevelWeights& weights, std::string_view text,
                          std::uint32_t index) {
        auto* room = keyed.room(3 * text.size());
        const auto* end = weights.writeKey(text, room);
        if (end)
            keyed.add(index, static_cast<std::size_t>(end - room));
        return end != nullptr;
    }

    // The collator's own key says all, so that equal keys are equal texts.
    void addOther(KeyedTexts& keyed, std::string_view text, std::uint32_t index, std::vector<UChar>& utf16) const {
        utf16.resize(text.size());  // UTF-16 never has more units than UTF-8 has bytes
        UErrorCode status = U_ZERO_ERROR;
        std::int32_t units = 0;
        u_strFromUTF8WithSub(utf16.data(), Collator::length(text), &units, text.data(), Collator::length(text), 0xfffd,
                             nullptr, &status);
        const auto write = [&](std::int32_t room) {
            return ucol_getSortKey(m_collator.get(), utf16.data(), units, keyed.room(static_cast<std::size_t>(room)),
                                   room);
        };
        const auto guess = 4 * Collator::length(text) + 16;
        auto size = write(guess);
        if (size > guess)
            size = write(size);
        if (size == 0)
            throw std::bad_alloc();
        keyed.add(index, static_cast<std::size_t>(size));
    }

    std::string m_locale;
    Collator m_collator;
    std::once_flag m_firstLevelMade;
    std::optional<FirstLevelWeights> m_firstLevel;
};

Collation::Collation(const std::string& locale) : m_engine(std::make_unique<Engine>(locale)) {}

Collation::~Collation() = default;

const Collation& Collation::ofUser() {
    static const Collation collation(collationLocale(
        {.lcAll = std::getenv("LC_ALL"), .lcCollate = std::getenv("LC_COLLATE"), .lang = std::getenv("LANG")}));
    return collation;
}

std::weak_ordering Collation::compare(std::string_view a, std::string_view b) const {
    return m_engine->compare(a, b);
}

void Collation::prepare() const {
    static_cast<void>(m_engine->firstLevel());
}

std::vector<std::uint32_t> Collation::order(std::span<const std::string_view> texts) const {
    return m_engine->order(texts);
}

std::string collationLocale(const LocaleVariables& variables) {
    for (const auto* locale : {variables.lcAll, variables.lcCollate, variables.lang})
        if (locale && *locale)
            return namesNoLanguage(locale) ? "tr" : locale;
    return "tr";
}
