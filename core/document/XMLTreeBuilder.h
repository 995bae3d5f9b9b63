// SPDX-License-Identifier: MIT
#pragma once

#include "core/document/KdbxXMLNode.h"
#include "core/document/XMLParser.h"

#include <array>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// Which text of an element is worth keeping: all, or not what is left out where the element has child elements and
/// nothing reads it.
enum class KeptText : std::uint8_t { all, whatIsRead };

/// Makes the tree of a document from the parser's events, in few large pieces of memory: a vault has more elements than
/// it pays to allocate one by one. What it copies of the text is wiped.
class XMLTreeBuilder final : public XMLParser::Listener {
public:
    /// How much of everything a tree holds, to go back to.
    struct Extent {
        std::size_t nodes;
        std::size_t attributes;
        std::size_t texts;
    };

    explicit XMLTreeBuilder(KeptText keptText) : m_keptText(keptText) {}
    XMLTreeBuilder(const XMLTreeBuilder&) = delete;
    XMLTreeBuilder& operator=(const XMLTreeBuilder&) = delete;

    /// Drops all, and starts a document whose protected values `stream` unmasks, if there is one.
    void begin(InnerStreamCipher* stream);

    void startElement(std::string_view name, const char* const* attributes) override { open(name, attributes); }
    void characters(std::string_view piece, XMLParser::Lifetime lifetime) override;
    void endElement() override { close(); }

    /// As `startElement` and `endElement`. The element is complete when it is closed.
    const KdbxXMLNode& open(std::string_view name, const char* const* attributes);
    const KdbxXMLNode& close();

    [[nodiscard]] Extent extent() const noexcept {
        return {.nodes = m_nodes.size(), .attributes = m_attributes.size(), .texts = m_texts.size()};
    }
    /// Drops what is in the element that was closed last, whose opening left the tree at `extent`.
    void dropContent(const Extent& extent);

    /// The root element, once it is closed, valid as long as the parsed bytes and until the next `begin`.
    [[nodiscard]] const KdbxXMLNode* root() const noexcept { return m_root; }

private:
    /// An element's name and what it means, one object for all elements of that name.
    struct Name {
        std::string text;
        XMLName known;
    };

    /// Each name once. A document has few names and many elements, so the last ones met are found by a glance.
    class NameTable {
    public:
        const Name& name(std::string_view text);

    private:
        const Name& lookUp(std::string_view text);

        std::map<std::string, Name, std::less<>> m_names;
        std::array<const Name*, 256> m_recent{};
    };

    /// Room for nodes that stay where they are, given out one after the other.
    class NodePool {
    public:
        KdbxXMLNode* make(const Name& name, const Text::Map<std::string>& attributes);

        [[nodiscard]] std::size_t size() const noexcept { return m_used; }
        /// Forgets all but the first nodes. They own nothing, so nothing is destroyed, and the room is used again.
        void goBackTo(std::size_t size) noexcept { m_used = size; }

    private:
        union Room {
            Room() {}  // NOLINT(modernize-use-equals-default): a node can't be made from nothing, so none is there
            KdbxXMLNode node;
        };
        static_assert(std::is_trivially_destructible_v<KdbxXMLNode>);
        static constexpr std::size_t nodesPerBlock = 1024;
        using Block = std::array<Room, nodesPerBlock>;

        std::vector<std::unique_ptr<Block>> m_blocks;
        std::size_t m_used = 0;
    };

    struct Open {
        KdbxXMLNode* node;
        KdbxXMLNode* lastChild = nullptr;
        Bytes* copy = nullptr;  // the text, once it is not one piece of the document
    };

    /// The attributes as the tree has them.
    struct Kept {
        const Text::Map<std::string>* attributes;
        bool isProtected = false;
    };

    void goBackTo(const Extent& extent);
    [[nodiscard]] bool isWorthKeeping(const Open& open) const;
    void copy(Open& open, std::string_view piece);
    Kept keep(const char* const* attributes);
    void append(KdbxXMLNode* node);
    void unmask(KdbxXMLNode& node);

    KeptText m_keptText;
    InnerStreamCipher* m_stream = nullptr;
    NameTable m_names;
    NodePool m_nodes;
    std::deque<Text::Map<std::string>> m_attributes;
    std::deque<Bytes> m_texts;  // of elements whose text is not in the parsed bytes
    std::vector<Open> m_open;   // innermost last
    KdbxXMLNode* m_closed = nullptr;
    const KdbxXMLNode* m_root = nullptr;
};
