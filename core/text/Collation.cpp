// SPDX-License-Identifier: MIT
#include "core/text/Collation.h"

#include "core/primitives/Bytes.h"
#include "core/primitives/Precondition.h"

#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/uloc.h>
#include <unicode/uset.h>
#include <unicode/ustring.h>

#include <endian.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>
#include <numeric>
#include <optional>

namespace {

// For fewer texts the collator's own keys are made before the table of weights is.
constexpr std::size_t worthTable = 2000;

// What is read so many steps later is fetched now, where it lies scattered: to wait for each takes longer than to read
// it.
constexpr std::size_t ahead = 16;

// The first scalar that has no weight in the table: ASCII, Latin-1 and Latin Extended-A stand before it.
constexpr char32_t tableEnd = 0x180;

struct Closing {
    void operator()(UCollator* collator) const { ucol_close(collator); }
    void operator()(USet* set) const { uset_close(set); }
};
using Collator = std::unique_ptr<UCollator, Closing>;
using Set = std::unique_ptr<USet, Closing>;

// The collator counts in 32 bits. No list tells apart what differs only behind this.
std::string_view clipped(std::string_view text) {
    return text.substr(0, 16UL << 20);
}

std::int32_t length(std::string_view text) {
    return static_cast<std::int32_t>(clipped(text).size());
}

bool namesNoLanguage(std::string_view locale) {
    const auto name = locale.substr(0, locale.find_first_of(".@"));
    return name.empty() || name == "C" || name == "POSIX";
}

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

Collator opened(const std::string& locale, UCollationStrength strength) {
    UErrorCode status = U_ZERO_ERROR;
    Collator collator(ucol_open(namedAsInCLDR(locale).c_str(), &status));
    if (U_FAILURE(status)) {
        status = U_ZERO_ERROR;
        collator.reset(ucol_open("", &status));
    }
    precondition(U_SUCCESS(status));  // the order that most languages share is part of ICU's library
    ucol_setAttribute(collator.get(), UCOL_STRENGTH, static_cast<UColAttributeValue>(strength), &status);
    ucol_setAttribute(collator.get(), UCOL_NUMERIC_COLLATION, UCOL_ON, &status);
    ucol_setAttribute(collator.get(), UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
    precondition(U_SUCCESS(status));  // every collator has these attributes
    return collator;
}

std::weak_ordering compared(const UCollator* collator, std::string_view a, std::string_view b) {
    UErrorCode status = U_ZERO_ERROR;
    return ucol_strcollUTF8(collator, a.data(), length(a), b.data(), length(b), &status) <=> 0;
}

std::string utf8(char32_t scalar) {
    if (scalar < 0x80)
        return {static_cast<char>(scalar)};
    return {static_cast<char>(0xc0 | scalar >> 6), static_cast<char>(0x80 | (scalar & 0x3f))};
}

/// The weights of the letters, digits and signs of which most titles consist, found by asking the collator.
///
/// A text of these alone has a key whose order is that of the collator at its first level, where base letters count
/// and neither accents nor case do. It takes a tenth of the time that the collator needs for its own. Where keys are
/// equal, the collator decides.
class FirstLevel {
public:
    explicit FirstLevel(const std::string& locale) : m_collator(opened(locale, UCOL_PRIMARY)) {
        auto letters = lettersWithOneWeight();
        std::ranges::sort(letters, [this](char32_t a, char32_t b) { return compare(a, b) < 0; });
        if (!letters.empty() && digitsStandTogether(letters))
            number(letters);
    }

    /// Writes the key of a text to `place`, which has room for three times the text, and gives its end. None for a
    /// text with other scalars. No byte of a key is zero.
    [[nodiscard]] std::uint8_t* writeKey(std::string_view text, std::uint8_t* place) const {
        for (std::size_t i = 0; i < text.size();) {
            if (const auto weight = m_plainWeights[static_cast<std::uint8_t>(text[i])]) {
                *place++ = weight;
                ++i;
                continue;
            }
            if (isDigit(text[i])) {
                const auto digits = digitsAt(text, i);
                place = writeNumber(digits, place);
                if (!place)
                    return nullptr;
                i += digits.size();
                continue;
            }
            const auto scalar = scalarAt(text, i);
            if (m_weights[scalar] == 0)
                return nullptr;
            *place++ = m_weights[scalar];
            i += scalar < 0x80 ? 1 : 2;
        }
        return place;
    }

private:
    // Two bytes and its digits stand for a number. A longer one is left to the collator.
    static constexpr std::size_t mostDigits = 200;

    // That of one or two bytes. Zero, which has no weight, stands for all others.
    static char32_t scalarAt(std::string_view text, std::size_t index) {
        const auto lead = static_cast<std::uint8_t>(text[index]);
        if (lead < 0x80)
            return lead;
        if (lead < 0xc2 || lead > 0xc5 || index + 1 == text.size())
            return 0;
        const auto trail = static_cast<std::uint8_t>(text[index + 1]);
        return trail >> 6 == 2 ? (lead & 0x1fU) << 6 | (trail & 0x3fU) : 0;
    }

    static bool isDigit(char c) { return c >= '0' && c <= '9'; }

    static std::string_view digitsAt(std::string_view text, std::size_t begin) {
        auto end = begin;
        while (end < text.size() && isDigit(text[end]))
            ++end;
        return text.substr(begin, end - begin);
    }

    // More digits are a greater number once leading zeros are gone.
    [[nodiscard]] std::uint8_t* writeNumber(std::string_view digits, std::uint8_t* place) const {
        digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
        if (digits.size() > mostDigits || m_weights['0'] == 0)
            return nullptr;
        *place++ = m_weights['0'];
        *place++ = static_cast<std::uint8_t>(digits.size() + 1);
        return std::ranges::copy(digits, place).out;
    }

    std::weak_ordering compare(char32_t a, char32_t b) const { return compared(m_collator.get(), utf8(a), utf8(b)); }

    // A letter that stands for two ("æ") is left out, one with an accent is not: that has no weight at this level.
    // None at all where letters in a row have an order of their own ("ch").
    std::vector<char32_t> lettersWithOneWeight() const {
        const Set contractions(uset_openEmpty());
        const Set expansions(uset_openEmpty());
        UErrorCode status = U_ZERO_ERROR;
        ucol_getContractionsAndExpansions(m_collator.get(), contractions.get(), expansions.get(), true, &status);

        std::vector<char32_t> letters;
        std::vector<char32_t> expanding;
        for (char32_t scalar = ' '; scalar < tableEnd; ++scalar) {
            if (!isCandidate(scalar) || compared(m_collator.get(), utf8(scalar), "") == 0)
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

    static bool isCandidate(char32_t scalar) { return scalar < 0x7f || u_isalpha(static_cast<UChar32>(scalar)); }

    static bool anyConsistsOf(const USet* contractions, const std::vector<char32_t>& letters) {
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

    // Numbers share one weight, which no other letter may have or divide.
    bool digitsStandTogether(const std::vector<char32_t>& letters) const {
        const auto zero = std::ranges::find(letters, U'0');
        for (char32_t digit = '0'; digit <= '9'; ++digit)
            if (letters.end() - zero <= static_cast<std::ptrdiff_t>(digit - '0') || zero[digit - '0'] != digit)
                return false;
        const auto after = zero + 10;
        return (zero == letters.begin() || compare(zero[-1], '0') < 0) &&
               (after == letters.end() || compare('9', *after) < 0);
    }

    void number(const std::vector<char32_t>& sorted) {
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

    Collator m_collator;
    std::array<std::uint8_t, tableEnd> m_weights{};    // 0: not in the table
    std::array<std::uint8_t, 0x100> m_plainWeights{};  // of the bytes that are a letter or a sign each, and no digit
};

/// Texts by their keys. They are sorted word by word: keys that share a beginning are told apart by what follows it,
/// and their bytes are read once, in a row.
class KeyedTexts {
public:
    /// Room for so many keys that are as long as their texts together, or a little longer, is made at once.
    explicit KeyedTexts(std::size_t expected = 0, std::size_t expectedBytes = 0) {
        m_keys.reserve(expected);
        m_bytes.reserve(expectedBytes + 2 * wordSize * expected);
    }

    /// Room for a key of this size behind those that are there.
    std::uint8_t* room(std::size_t size) {
        const auto needed = m_end + size + wordSize;
        if (m_bytes.capacity() < needed) {
            m_bytes.resize(m_end);
            m_bytes.reserve(2 * needed);
        }
        m_bytes.resize(needed);
        return m_bytes.data() + m_end;
    }

    /// Keeps the key that was written into the room. It has no zero but perhaps a last one, and gets zeros up to the
    /// end of its last word, one at least.
    void add(std::uint32_t index, std::size_t size) {
        m_keys.push_back({.word = 0, .rest = static_cast<std::uint32_t>(m_end / wordSize), .index = index});
        std::memset(m_bytes.data() + m_end + size, 0, wordSize);
        m_end += size / wordSize * wordSize + wordSize;
    }

    /// The indices by their keys, those of equal keys by what `compare` says of two of them, and then as they came.
    /// `fetch` is told of each index that will be compared.
    template <class Compare, class Fetch>
    std::vector<std::uint32_t> order(Compare compare, Fetch fetch) {
        std::vector<std::span<Key>> waiting{m_keys};
        while (!waiting.empty()) {
            const auto keys = waiting.back();
            waiting.pop_back();
            readWords(keys);
            std::ranges::sort(keys, {}, &Key::word);
            for (auto run = equalWordsAt(keys.begin(), keys); !run.empty(); run = equalWordsAt(run.end(), keys)) {
                if (run.size() > 1 && endsIn(run.front().word))
                    settle(run, compare, fetch);
                else if (run.size() > 1)
                    waiting.push_back(run);
            }
        }
        std::vector<std::uint32_t> indices(m_keys.size());
        std::ranges::transform(m_keys, indices.begin(), &Key::index);
        return indices;
    }

private:
    struct Key {
        std::uint64_t word;  // what is compared now
        std::uint32_t rest;  // the word in m_bytes where it goes on; half the size makes a sort a fifth faster
        std::uint32_t index;
    };

    static constexpr std::size_t wordSize = sizeof(Key::word);

    static bool endsIn(std::uint64_t word) { return (word & 0xff) == 0; }

    [[nodiscard]] const std::uint8_t* wordAt(const Key& key) const { return m_bytes.data() + key.rest * wordSize; }

    void readWords(std::span<Key> keys) const {
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if (i + ahead < keys.size())
                __builtin_prefetch(wordAt(keys[i + ahead]));
            readWord(keys[i]);
        }
    }

    void readWord(Key& key) const {
        std::memcpy(&key.word, wordAt(key), wordSize);
        key.word = be64toh(key.word);
        ++key.rest;
    }

    static std::span<Key> equalWordsAt(std::span<Key>::iterator begin, std::span<Key> keys) {
        const auto differs = [&](const Key& key) { return key.word != begin->word; };
        return {begin, std::find_if(begin, keys.end(), differs)};
    }

    template <class Compare, class Fetch>
    static void settle(std::span<Key> keys, Compare compare, Fetch fetch) {
        for (const auto& key : keys)
            fetch(key.index);
        const auto less = [&](std::uint32_t a, std::uint32_t b) { return compare(a, b) < 0; };
        std::ranges::sort(keys, {}, &Key::index);
        if (!std::ranges::is_sorted(keys, less, &Key::index))
            std::ranges::stable_sort(keys, less, &Key::index);
    }

    std::vector<Key> m_keys;
    Bytes m_bytes;
    std::size_t m_end = 0;  // of the keys in m_bytes
};

}  // namespace

class Collation::Engine {
public:
    explicit Engine(const std::string& locale) : m_locale(locale), m_collator(opened(locale, UCOL_TERTIARY)) {}

    [[nodiscard]] std::weak_ordering compare(std::string_view a, std::string_view b) const {
        return compared(m_collator.get(), a, b);
    }

    const FirstLevel& firstLevel() {
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
            bytes += clipped(text).size();
            longest = std::max(longest, clipped(text).size());
        }
        const auto fetch = [&](std::size_t i) { __builtin_prefetch(texts[i].data()); };
        KeyedTexts common(texts.size(), bytes + 3 * longest);
        KeyedTexts others;
        std::vector<UChar> utf16;
        for (std::uint32_t i = 0; i < texts.size(); ++i) {
            if (i + ahead < texts.size())
                fetch(i + ahead);
            if (!weights || !addCommon(common, *weights, clipped(texts[i]), i))
                addOther(others, clipped(texts[i]), i, utf16);
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
    static bool addCommon(KeyedTexts& keyed, const FirstLevel& weights, std::string_view text, std::uint32_t index) {
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
        u_strFromUTF8WithSub(utf16.data(), length(text), &units, text.data(), length(text), 0xfffd, nullptr, &status);
        const auto write = [&](std::int32_t room) {
            return ucol_getSortKey(m_collator.get(), utf16.data(), units, keyed.room(static_cast<std::size_t>(room)),
                                   room);
        };
        const auto guess = 4 * length(text) + 16;
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
    std::optional<FirstLevel> m_firstLevel;
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
