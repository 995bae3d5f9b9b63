// SPDX-License-Identifier: MIT
#include "core/document/XMLTreeBuilder.h"

#include "core/model/SecureString.h"
#include "core/primitives/Base64.h"

namespace {

const Text::Map<std::string> noAttributes;

std::size_t slotOf(std::string_view name) {
    const auto byte = [&](std::size_t i) { return static_cast<std::size_t>(static_cast<std::uint8_t>(name[i])); };
    return (name.size() * 31 + byte(0) * 7 + byte(name.size() / 2) * 13 + byte(name.size() - 1) * 3) % 256;
}

}  // namespace

const XMLTreeBuilder::Name& XMLTreeBuilder::NameTable::name(std::string_view text) {
    auto& slot = m_recent[slotOf(text)];
    if (slot == nullptr || slot->text != text)
        slot = &lookUp(text);
    return *slot;
}

const XMLTreeBuilder::Name& XMLTreeBuilder::NameTable::lookUp(std::string_view text) {
    auto found = m_names.find(text);
    if (found == m_names.end())
        found = m_names.emplace(std::string(text), Name{std::string(text), knownName(text)}).first;
    return found->second;
}

KdbxXMLNode* XMLTreeBuilder::NodePool::make(const Name& name, const Text::Map<std::string>& attributes) {
    if (m_used == m_blocks.size() * nodesPerBlock)
        m_blocks.push_back(std::make_unique<Block>());
    auto* const room = &(*m_blocks[m_used / nodesPerBlock])[m_used % nodesPerBlock];
    ++m_used;
    return ::new (room) KdbxXMLNode{.name = name.text, .attributes = attributes, .known = name.known};
}

void XMLTreeBuilder::begin(InnerStreamCipher* stream) {
    m_stream = stream;
    m_root = nullptr;
    m_open.clear();
    goBackTo({.nodes = 0, .attributes = 0, .texts = 0});
}

const KdbxXMLNode& XMLTreeBuilder::open(std::string_view name, const char* const* attributes) {
    const auto kept = keep(attributes);
    auto* const node = m_nodes.make(m_names.name(name), *kept.attributes);
    node->isProtected = kept.isProtected;
    m_open.push_back({.node = node});
    return *node;
}

void XMLTreeBuilder::characters(std::string_view piece, XMLParser::Lifetime lifetime) {
    auto& open = m_open.back();
    auto& text = open.node->text;
    const bool isBehindText = text.data() + text.size() == piece.data();
    if (lifetime == XMLParser::Lifetime::document && open.copy == nullptr && (text.empty() || isBehindText))
        text = {text.empty() ? piece.data() : text.data(), text.size() + piece.size()};
    else if (isWorthKeeping(open))
        copy(open, piece);
}

const KdbxXMLNode& XMLTreeBuilder::close() {
    const auto open = m_open.back();
    m_open.pop_back();
    m_closed = open.node;
    if (open.copy != nullptr)
        open.node->text = textOf(*open.copy);
    if (open.node->isProtected && m_stream != nullptr)
        unmask(*open.node);
    if (m_open.empty())
        m_root = open.node;
    else
        append(open.node);
    return *open.node;
}

void XMLTreeBuilder::dropContent(const Extent& extent) {
    m_closed->text = {};
    m_closed->children = {};
    goBackTo(extent);
}

void XMLTreeBuilder::goBackTo(const Extent& extent) {
    m_nodes.goBackTo(extent.nodes);
    m_attributes.resize(extent.attributes);
    m_texts.resize(extent.texts);
}

bool XMLTreeBuilder::isWorthKeeping(const Open& open) const {
    return m_keptText == KeptText::all || open.lastChild == nullptr || open.node->isProtected ||
           isReadBesideChildren(open.node->known);
}

void XMLTreeBuilder::copy(Open& open, std::string_view piece) {
    if (open.copy == nullptr)
        open.copy = &m_texts.emplace_back(copyOf(bytesOf(open.node->text)));
    ::append(*open.copy, bytesOf(piece));
}

/// `Protected` is not among them.
XMLTreeBuilder::Kept XMLTreeBuilder::keep(const char* const* attributes) {
    Kept kept{.attributes = &noAttributes};
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

/// Appends to the children of the innermost open element.
void XMLTreeBuilder::append(KdbxXMLNode* node) {
    auto& parent = m_open.back();
    (parent.lastChild == nullptr ? parent.node->children.m_first : parent.lastChild->nextSibling) = node;
    parent.lastChild = node;
}

/// Takes the value's share of the stream, whatever the element is: what follows depends on it.
void XMLTreeBuilder::unmask(KdbxXMLNode& node) {
    auto value = Base64::decodeLenient(node.text).value_or(Bytes());
    m_stream->processInPlace(value);
    if (!Text::isValidUTF8(value)) {
        auto repaired = Text::repairingUTF8(value);
        value = copyOf(bytesOf(repaired));
        wipe(repaired);
    }
    node.text = textOf(m_texts.emplace_back(std::move(value)));
}
