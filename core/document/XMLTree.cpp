// SPDX-License-Identifier: MIT
#include "core/document/XMLTree.h"

#include "core/document/XMLParser.h"
#include "core/model/SecureString.h"
#include "core/primitives/Base64.h"

#include <algorithm>
#include <array>
#include <deque>
#include <map>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t elementsPerBlock = 1024;

constexpr std::pair<std::string_view, XMLName> knownNames[] = {
    {"Association", XMLName::association},
    {"AutoType", XMLName::autoType},
    {"Binaries", XMLName::binaries},
    {"Binary", XMLName::binary},
    {"CreationTime", XMLName::creationTime},
    {"DatabaseDescription", XMLName::databaseDescription},
    {"DatabaseName", XMLName::databaseName},
    {"DefaultAutoTypeSequence", XMLName::defaultAutoTypeSequence},
    {"DefaultSequence", XMLName::defaultSequence},
    {"DefaultUserName", XMLName::defaultUserName},
    {"Enabled", XMLName::enabled},
    {"Entry", XMLName::entry},
    {"Expires", XMLName::expires},
    {"ExpiryTime", XMLName::expiryTime},
    {"Generator", XMLName::generator},
    {"Group", XMLName::group},
    {"HeaderHash", XMLName::headerHash},
    {"History", XMLName::history},
    {"HistoryMaxItems", XMLName::historyMaxItems},
    {"HistoryMaxSize", XMLName::historyMaxSize},
    {"IconID", XMLName::iconID},
    {"IsExpanded", XMLName::isExpanded},
    {"KeePassFile", XMLName::document},
    {"Key", XMLName::key},
    {"KeystrokeSequence", XMLName::keystrokeSequence},
    {"LastAccessTime", XMLName::lastAccessTime},
    {"LastModificationTime", XMLName::lastModificationTime},
    {"MemoryProtection", XMLName::memoryProtection},
    {"Meta", XMLName::meta},
    {"Name", XMLName::name},
    {"Notes", XMLName::notes},
    {"ProtectNotes", XMLName::protectNotes},
    {"ProtectPassword", XMLName::protectPassword},
    {"ProtectTitle", XMLName::protectTitle},
    {"ProtectURL", XMLName::protectURL},
    {"ProtectUserName", XMLName::protectUserName},
    {"RecycleBinEnabled", XMLName::recycleBinEnabled},
    {"RecycleBinUUID", XMLName::recycleBinUUID},
    {"Root", XMLName::root},
    {"String", XMLName::string},
    {"Tags", XMLName::tags},
    {"Times", XMLName::times},
    {"UUID", XMLName::uuid},
    {"Value", XMLName::value},
    {"Window", XMLName::window},
};

/// The meaning of a name, up to canonical equivalence. The Kelvin sign is the one code point outside ASCII that may
/// stand in an element's name and is equivalent to a letter of these.
XMLName knownName(std::string_view name) {
    constexpr std::string_view kelvinSign = "\xE2\x84\xAA";
    std::string plain;
    for (std::size_t i = 0; i < name.size();) {
        const bool isKelvinSign = name.substr(i).starts_with(kelvinSign);
        plain += isKelvinSign ? 'K' : name[i];
        i += isKelvinSign ? kelvinSign.size() : 1;
    }
    const auto* const found = std::ranges::find(knownNames, plain, &std::pair<std::string_view, XMLName>::first);
    return found == std::end(knownNames) ? XMLName::foreign : found->second;
}

/// Whether nobody asks for the text of such an element where it has child elements. Of a foreign one these are printed
/// and the text is not.
bool isUnreadBesideChildren(XMLName name) {
    switch (name) {
        case XMLName::document:
        case XMLName::association:
        case XMLName::autoType:
        case XMLName::entry:
        case XMLName::group:
        case XMLName::history:
        case XMLName::meta:
        case XMLName::root:
        case XMLName::string:
        case XMLName::times:
        case XMLName::foreign:
            return true;
        default:
            return false;
    }
}

const Text::Map<std::string> noAttributes;

/// An element's name and what it means, one object for all elements of that name.
struct Name {
    std::string text;
    XMLName known;
};

/// Each name once. A document has few names and many elements, so the last ones met are found by a glance.
class NameTable {
public:
    const Name& name(std::string_view text) {
        auto& slot = m_recent[slotOf(text)];
        if (slot == nullptr || slot->text != text)
            slot = &lookUp(text);
        return *slot;
    }

private:
    static std::size_t slotOf(std::string_view text) {
        const auto byte = [&](std::size_t i) { return static_cast<std::size_t>(static_cast<std::uint8_t>(text[i])); };
        return (text.size() * 31 + byte(0) * 7 + byte(text.size() / 2) * 13 + byte(text.size() - 1) * 3) % 256;
    }

    const Name& lookUp(std::string_view text) {
        auto found = m_names.find(text);
        if (found == m_names.end())
            found = m_names.emplace(std::string(text), Name{std::string(text), knownName(text)}).first;
        return found->second;
    }

    std::map<std::string, Name, std::less<>> m_names;
    std::array<const Name*, 256> m_recent{};
};

/// Room for elements that stay where they are, given out one after the other.
class ElementPool {
public:
    XMLElement* make(const Name& name, const Text::Map<std::string>& attributes) {
        if (m_used == m_blocks.size() * elementsPerBlock)
            m_blocks.push_back(std::make_unique<Block>());
        auto* const place = &(*m_blocks[m_used / elementsPerBlock])[m_used % elementsPerBlock];
        ++m_used;
        return ::new (place) XMLElement{.name = name.text, .attributes = attributes, .known = name.known};
    }

    [[nodiscard]] std::size_t size() const { return m_used; }

    /// Forgets all but the first elements. They own nothing, so nothing is destroyed, and the room is used again.
    void goBackTo(std::size_t size) { m_used = size; }

private:
    union Place {
        Place() {}
        XMLElement element;
    };
    static_assert(std::is_trivially_destructible_v<XMLElement>);
    using Block = std::array<Place, elementsPerBlock>;

    std::vector<std::unique_ptr<Block>> m_blocks;
    std::size_t m_used = 0;
};

}  // namespace

/// Makes the tree from the events.
class XMLTree::Builder final : public XMLParser::Listener {
public:
    explicit Builder(KeptText keptText) : m_keptText(keptText) {}

    const XMLElement* parse(ByteView data, InnerStreamCipher* stream, const EntryTaker& taker) {
        clear();
        m_stream = stream;
        m_taker = &taker;
        return m_parser.parse(data, *this) ? m_root : nullptr;
    }

    void startElement(std::string_view name, const char* const* attributes) override {
        const auto kept = keep(attributes);
        auto* const element = m_elements.make(m_names.name(name), *kept.attributes);
        element->isProtected = kept.isProtected;
        if (element->known == XMLName::entry && isInGroup())
            m_beforeEntry = {m_elements.size(), m_attributes.size(), m_texts.size()};
        m_open.push_back({.element = element, .isOnGroupPath = isOnGroupPath(element->known)});
    }

    void characters(std::string_view piece, XMLParser::Lifetime lifetime) override {
        auto& open = m_open.back();
        auto& text = open.element->text;
        const bool standsBehind = text.data() + text.size() == piece.data();
        if (lifetime == XMLParser::Lifetime::document && open.copy == nullptr && (text.empty() || standsBehind))
            text = {text.empty() ? piece.data() : text.data(), text.size() + piece.size()};
        else if (isWorthKeeping(open))
            copy(open, piece);
    }

    void endElement() override {
        const auto open = m_open.back();
        m_open.pop_back();
        if (open.copy != nullptr)
            open.element->text = textOf(*open.copy);
        if (open.element->isProtected && m_stream != nullptr)
            unmask(*open.element);
        if (*m_taker && open.element->known == XMLName::entry && isInGroup())
            letTake(*open.element);
        if (m_open.empty())
            m_root = open.element;
        else
            m_open.back().append(open.element);
    }

private:
    /// How much of everything there is, to go back to.
    struct Contents {
        std::size_t elements;
        std::size_t attributes;
        std::size_t texts;
    };

    struct Open {
        XMLElement* element;
        bool isOnGroupPath;
        XMLElement* lastChild = nullptr;
        Bytes* copy = nullptr;  // the text, once it is not one piece of the document

        void append(XMLElement* child) {
            (lastChild == nullptr ? element->children.m_first : lastChild->nextSibling) = child;
            lastChild = child;
        }
    };

    void clear() {
        m_root = nullptr;
        m_open.clear();
        goBackTo({0, 0, 0});
    }

    void goBackTo(const Contents& contents) {
        m_elements.goBackTo(contents.elements);
        m_attributes.resize(contents.attributes);
        m_texts.resize(contents.texts);
    }

    /// Whether an element of that name, the next to be opened, is the document element, its `Root`, or a group in
    /// there.
    bool isOnGroupPath(XMLName name) const {
        if (m_open.empty())
            return name == XMLName::document;
        return m_open.back().isOnGroupPath && name == (m_open.size() == 1 ? XMLName::root : XMLName::group);
    }

    bool isInGroup() const { return m_open.size() > 2 && m_open.back().isOnGroupPath; }

    void letTake(XMLElement& entry) {
        entry.taken = (*m_taker)(entry, static_cast<int>(m_open.size()) + 1);
        entry.text = {};
        entry.children = {};
        goBackTo(m_beforeEntry);
    }

    bool isWorthKeeping(const Open& open) const {
        const auto& element = *open.element;
        return m_keptText == KeptText::all || open.lastChild == nullptr || element.isProtected ||
               !isUnreadBesideChildren(element.known);
    }

    void copy(Open& open, std::string_view piece) {
        if (open.copy == nullptr)
            open.copy = &m_texts.emplace_back(copyOf(bytesOf(open.element->text)));
        append(*open.copy, bytesOf(piece));
    }

    struct Kept {
        const Text::Map<std::string>* attributes = &noAttributes;
        bool isProtected = false;
    };

    /// The attributes as the tree has them: `Protected` is not among them.
    Kept keep(const char* const* attributes) {
        Kept kept;
        Text::Map<std::string>* own = nullptr;
        for (; *attributes != nullptr; attributes += 2) {
            const std::string_view key(attributes[0]);
            const std::string_view value(attributes[1]);
            if (key == "Protected") {
                kept.isProtected = Text::lowercased(value) == "true";
                continue;
            }
            if (own == nullptr)
                kept.attributes = own = &m_attributes.emplace_back();
            own->insert_or_assign(std::string(key), std::string(value));
        }
        return kept;
    }

    /// Takes the value's share of the stream, whatever the element is: what follows depends on it.
    void unmask(XMLElement& element) {
        auto value = Base64::decodeLenient(element.text).value_or(Bytes());
        m_stream->processInPlace(value);
        if (!Text::isValidUTF8(value)) {
            auto repaired = Text::repairingUTF8(value);
            value = copyOf(bytesOf(repaired));
            wipe(repaired);
        }
        element.text = textOf(m_texts.emplace_back(std::move(value)));
    }

    XMLParser m_parser;
    KeptText m_keptText;
    InnerStreamCipher* m_stream = nullptr;
    const EntryTaker* m_taker = nullptr;
    Contents m_beforeEntry{};  // what there was when the entry in a group began that is open now
    NameTable m_names;
    ElementPool m_elements;
    std::deque<Text::Map<std::string>> m_attributes;
    std::deque<Bytes> m_texts;  // of elements whose text does not stand in the document
    std::vector<Open> m_open;   // innermost last
    const XMLElement* m_root = nullptr;
};

const XMLElement* XMLElement::child(XMLName childName) const {
    const auto found = std::ranges::find(children, childName, &XMLElement::known);
    return found == children.end() ? nullptr : &*found;
}

std::string_view XMLElement::trimmedText() const {
    // Most texts begin and end with a character that is plainly none to trim.
    const auto isPlain = [](char c) { return c > ' ' && c < 0x7F; };
    if (!text.empty() && isPlain(text.front()) && isPlain(text.back()))
        return text;
    return Text::trimmingWhitespaceAndNewlines(text);
}

XMLTree::XMLTree(KeptText keptText) : m_builder(std::make_unique<Builder>(keptText)) {}

XMLTree::~XMLTree() = default;

const XMLElement* XMLTree::parse(ByteView data, InnerStreamCipher* stream, const EntryTaker& taker) {
    return m_builder->parse(data, stream, taker);
}
