// SPDX-License-Identifier: MIT
#include "core/text/TextICU.h"

#include "core/text/Text.h"

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/normalizer2.h>
#include <unicode/utext.h>

#include <memory>
#include <new>
#include <stdexcept>

namespace {

/// ICU fails on valid input only where memory or its own data are missing, and without either there is no going on.
void check(UErrorCode status) {
    if (U_FAILURE(status))
        throw std::bad_alloc();
}

const icu::Normalizer2& normalizer() {
    UErrorCode status = U_ZERO_ERROR;
    const auto* instance = icu::Normalizer2::getNFCInstance(status);
    check(status);
    return *instance;
}

/// ICU counts in 32 bits.
std::int32_t lengthOf(std::string_view text) {
    if (text.size() > INT32_MAX)
        throw std::length_error("a text of more than 2 GiB");
    return static_cast<std::int32_t>(text.size());
}

icu::StringPiece pieceOf(std::string_view text) {
    return {text.data(), lengthOf(text)};
}

/// The text, repaired into `storage` where it needs to be.
std::string_view wellFormed(std::string_view text, std::string& storage) {
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    if (Text::isValidUTF8(bytes))
        return text;
    return storage = Text::repairingUTF8(bytes);
}

/// Walks over characters. It is costly to make and so is kept, one a thread.
class CharacterWalker {
public:
    CharacterWalker() {
        UErrorCode status = U_ZERO_ERROR;
        m_iterator.reset(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        check(status);
    }
    CharacterWalker(const CharacterWalker&) = delete;
    CharacterWalker& operator=(const CharacterWalker&) = delete;
    ~CharacterWalker() { utext_close(&m_text); }

    void append(std::vector<std::string_view>& characters, std::string_view text) {
        standBefore(text);
        auto start = m_iterator->first();
        for (auto end = m_iterator->next(); end != icu::BreakIterator::DONE; end = m_iterator->next()) {
            characters.push_back(text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start)));
            start = end;
        }
        // The text may be a secret: ICU keeps a piece of it, which opening another one clears.
        standBefore("");
    }

private:
    void standBefore(std::string_view text) {
        UErrorCode status = U_ZERO_ERROR;
        utext_openUTF8(&m_text, text.data(), lengthOf(text), &status);
        m_iterator->setText(&m_text, status);
        check(status);
    }

    std::unique_ptr<icu::BreakIterator> m_iterator;
    UText m_text = UTEXT_INITIALIZER;
};

using CaseMapping = void (*)(const char*, std::uint32_t, icu::StringPiece, icu::ByteSink&, icu::Edits*, UErrorCode&);

std::string mapped(std::string_view text, CaseMapping mapping) {
    std::string storage;
    std::string result;
    icu::StringByteSink<std::string> sink(&result, lengthOf(text));
    UErrorCode status = U_ZERO_ERROR;
    // The empty name is the root locale; the default one might be Turkish.
    mapping("", 0, pieceOf(wellFormed(text, storage)), sink, nullptr, status);
    check(status);
    return result;
}

}  // namespace

namespace TextICU {

std::string composed(std::string_view text) {
    std::string storage;
    std::string result;
    icu::StringByteSink<std::string> sink(&result, lengthOf(text));
    UErrorCode status = U_ZERO_ERROR;
    normalizer().normalizeUTF8(0, pieceOf(wellFormed(text, storage)), sink, nullptr, status);
    check(status);
    return result;
}

void appendCharacters(std::vector<std::string_view>& characters, std::string_view text) {
    static thread_local CharacterWalker walker;
    walker.append(characters, text);
}

std::string lowercased(std::string_view text) {
    return mapped(text, icu::CaseMap::utf8ToLower);
}

std::string uppercased(std::string_view text) {
    return mapped(text, icu::CaseMap::utf8ToUpper);
}

}  // namespace TextICU
