// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <cstdint>
#include <exception>
#include <string_view>

struct XML_ParserStruct;

/// The events of an XML document, by expat. Namespaces are not looked at, and nothing outside the document is fetched.
/// What the parser held of the text is wiped.
class XMLParser {
public:
    /// The deepest nesting of elements. A walk over the tree may recurse: this many frames fit on every stack.
    /// A tree of groups 1,000 deep with a foreign element 1,000 deep at its end is well within it.
    static constexpr int deepestElement = 2500;

    /// How long a piece of text lasts: as long as the parsed bytes, or only during the call.
    enum class Lifetime : std::uint8_t { document, call };

    class Listener {
    public:
        virtual ~Listener() = default;
        /// `attributes` is names and values in turn, and a null pointer at the end.
        virtual void startElement(std::string_view name, const char* const* attributes) = 0;
        virtual void characters(std::string_view piece, Lifetime lifetime) = 0;
        virtual void endElement() = 0;
    };

    XMLParser();
    ~XMLParser();
    XMLParser(const XMLParser&) = delete;
    XMLParser& operator=(const XMLParser&) = delete;

    /// Runs a whole document in UTF-8. False for anything that is not well-formed or goes beyond a limit.
    /// What the listener throws is thrown on.
    [[nodiscard]] bool parse(ByteView data, Listener& listener);

private:
    struct Events;

    void prepare(ByteView data, Listener& listener);
    void findBuffer();
    [[nodiscard]] const char* inDocument(std::string_view piece);
    void count(std::size_t delivered);
    void stop() noexcept;
    template <class Step>
    void guarded(Step step) noexcept;

    XML_ParserStruct* m_parser;
    unsigned long m_salt = 0;  // of the names' hashes
    ByteView m_data;
    Listener* m_listener = nullptr;
    std::exception_ptr m_failure;
    bool m_isStopped = false;
    int m_depth = 0;
    int m_entities = 0;
    std::size_t m_delivered = 0;
    const char* m_buffer = nullptr;  // expat's copy of the bytes being parsed, once it is known
    std::size_t m_bufferSize = 0;
    std::size_t m_bufferStart = 0;  // the index in `m_data` of the buffer's first byte
};
