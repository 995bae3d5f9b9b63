// SPDX-License-Identifier: MIT
#include "core/document/XMLParser.h"

#include "core/primitives/LittleEndian.h"
#include "core/primitives/Random.h"

// Expat declares its amplification guard for those who say that it was built with one, as every distribution's is.
#define XML_DTD 1
#define XML_GE 1
#include <expat.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

// Expat counts in `int`. A piece as long as this holds any document whole that a person has.
constexpr std::size_t longestPiece = std::size_t{1} << 30;

// Entities that the document declares itself are resolved, as XML has it, but no vault needs them, and a few lines of
// them can stand for terabytes. What the document hands over by them may be as long as the document again and a
// mebibyte; what they cost without handing anything over, expat's own guard bounds. Text of the document itself
// counts once, so that no length of it is ever refused.
constexpr std::size_t expansionAllowance = std::size_t{1} << 20;
constexpr float largestAmplification = 10.0F;

// Expat resolves an entity within an entity by recursion.
constexpr int mostEntities = 500;

/// Precedes every piece of memory that expat has, so that its size is known when it is wiped.
struct alignas(std::max_align_t) Header {
    std::size_t size;
};

void* allocate(std::size_t size) {
    if (size > SIZE_MAX - sizeof(Header))
        return nullptr;
    void* const memory = std::malloc(sizeof(Header) + size);
    return memory == nullptr ? nullptr : ::new (memory) Header{size} + 1;
}

void release(void* memory) {
    if (memory == nullptr)
        return;
    auto* const header = static_cast<Header*>(memory) - 1;
    secureWipe(memory, header->size);
    std::free(header);
}

void* reallocate(void* memory, std::size_t size) {
    void* const larger = allocate(size);
    if (larger != nullptr && memory != nullptr) {
        std::memcpy(larger, memory, std::min(size, (static_cast<Header*>(memory) - 1)->size));
        release(memory);
    }
    return larger;
}

constexpr XML_Memory_Handling_Suite wipingMemory{allocate, reallocate, release};

}  // namespace

/// Runs a step unless the parse is over: expat may send an event or two after it was stopped. No exception may pass
/// through its frames.
template <class Step>
void XMLParser::guarded(Step step) noexcept {
    if (m_isStopped)
        return;
    try {
        step();
    } catch (...) {
        m_failure = std::current_exception();
        stop();
    }
}

/// The functions that expat calls.
struct XMLParser::Events {
    static XMLParser& self(void* userData) { return *static_cast<XMLParser*>(userData); }

    static void startElement(void* userData, const char* name, const char** attributes) {
        auto& parser = self(userData);
        parser.guarded([&] {
            if (++parser.m_depth > deepestElement)
                return parser.stop();
            const std::string_view nameText(name);
            parser.count(nameText.size());
            for (const auto* const* text = attributes; *text != nullptr; ++text)
                parser.count(std::strlen(*text));
            parser.m_listener->startElement(nameText, attributes);
        });
    }

    static void endElement(void* userData, const char*) {
        auto& parser = self(userData);
        parser.guarded([&] {
            --parser.m_depth;
            parser.m_listener->endElement();
        });
    }

    static void characters(void* userData, const char* text, int length) {
        auto& parser = self(userData);
        parser.guarded([&] {
            const std::string_view piece(text, static_cast<std::size_t>(length));
            parser.count(piece.size());
            if (const auto* const inPlace = parser.inDocument(piece))
                parser.m_listener->characters({inPlace, piece.size()}, Lifetime::document);
            else
                parser.m_listener->characters(piece, Lifetime::call);
        });
    }

    static void entityDeclaration(void* userData, const char*, int, const char*, int, const char*, const char*,
                                  const char*, const char*) {
        auto& parser = self(userData);
        if (++parser.m_entities > mostEntities)
            parser.stop();
    }

    /// A reference to something declared outside the document. To go on would be to lose a piece of text unseen.
    static void skippedEntity(void* userData, const char*, int) { self(userData).stop(); }
};

XMLParser::XMLParser() : m_parser(XML_ParserCreate_MM("UTF-8", &wipingMemory, nullptr)) {
    if (m_parser == nullptr)
        throw std::bad_alloc();
    // Drawn once, where expat would draw one for each of many small documents.
    std::array<std::uint8_t, sizeof m_salt> salt{};
    fillRandom(salt);
    m_salt = loadLE<unsigned long>(salt.data());
}

XMLParser::~XMLParser() {
    XML_ParserFree(m_parser);
}

bool XMLParser::parse(ByteView data, Listener& listener) {
    prepare(data, listener);
    bool isWellFormed = true;
    do {
        const auto piece = data.first(std::min(data.size(), longestPiece));
        data = data.subspan(piece.size());
        m_buffer = nullptr;
        isWellFormed =
            XML_Parse(m_parser, textOf(piece).data(), static_cast<int>(piece.size()), data.empty()) == XML_STATUS_OK;
    } while (isWellFormed && !data.empty());
    if (m_failure)
        std::rethrow_exception(m_failure);
    return isWellFormed && !m_isStopped;
}

void XMLParser::prepare(ByteView data, Listener& listener) {
    m_data = data;
    m_listener = &listener;
    m_failure = nullptr;
    m_isStopped = false;
    m_depth = 0;
    m_entities = 0;
    m_delivered = 0;
    // The bytes are UTF-8 whatever the document says of itself.
    XML_ParserReset(m_parser, "UTF-8");
    XML_SetUserData(m_parser, this);
    XML_SetElementHandler(m_parser, Events::startElement, Events::endElement);
    XML_SetCharacterDataHandler(m_parser, Events::characters);
    XML_SetEntityDeclHandler(m_parser, Events::entityDeclaration);
    XML_SetSkippedEntityHandler(m_parser, Events::skippedEntity);
    XML_SetParamEntityParsing(m_parser, XML_PARAM_ENTITY_PARSING_NEVER);
    XML_SetBillionLaughsAttackProtectionMaximumAmplification(m_parser, largestAmplification);
    // Below the threshold the guard is spared a division a token.
    XML_SetBillionLaughsAttackProtectionActivationThreshold(m_parser, data.size() + expansionAllowance);
    XML_SetHashSalt(m_parser, m_salt);
}

/// Finds expat's copy of the document, which it reads from: the event that is known by its byte index in the document
/// is also known by its position in the copy.
void XMLParser::findBuffer() {
    int offset = 0;
    int size = 0;
    m_buffer = XML_GetInputContext(m_parser, &offset, &size);
    m_bufferSize = static_cast<std::size_t>(size);
    m_bufferStart = static_cast<std::size_t>(XML_GetCurrentByteIndex(m_parser) - offset);
}

/// Where the document has a piece of text just as it is handed over, or null if it was made for the call, as a resolved
/// reference is. What the document has need not be copied.
const char* XMLParser::inDocument(std::string_view piece) {
    if (m_buffer == nullptr)
        findBuffer();
    const auto* const document = textOf(m_data).data();
    const auto distance = reinterpret_cast<std::uintptr_t>(piece.data()) - reinterpret_cast<std::uintptr_t>(m_buffer);
    if (m_buffer != nullptr && distance < m_bufferSize)
        return document + m_bufferStart + distance;
    // Line ends are normalised and handed over one by one, and nearly all were line feeds before.
    const auto event = static_cast<std::size_t>(XML_GetCurrentByteIndex(m_parser));
    return piece == "\n" && event < m_data.size() && document[event] == '\n' ? document + event : nullptr;
}

void XMLParser::count(std::size_t delivered) {
    m_delivered += delivered;
    if (m_delivered > 2 * m_data.size() + expansionAllowance)
        stop();
}

void XMLParser::stop() noexcept {
    m_isStopped = true;
    XML_StopParser(m_parser, XML_FALSE);
}
