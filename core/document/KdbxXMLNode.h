// SPDX-License-Identifier: MIT
#pragma once

#include "core/document/XMLName.h"
#include "core/primitives/InnerStreamCipher.h"
#include "core/text/Text.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct KdbxXMLNode;

/// The child elements of an element, in document order.
class KdbxXMLChildren {
public:
    class Iterator {
    public:
        using value_type = KdbxXMLNode;
        using difference_type = std::ptrdiff_t;

        Iterator() = default;
        explicit Iterator(const KdbxXMLNode* node) : m_node(node) {}
        const KdbxXMLNode& operator*() const { return *m_node; }
        const KdbxXMLNode* operator->() const { return m_node; }
        inline Iterator& operator++();
        Iterator operator++(int) {
            auto before = *this;
            ++*this;
            return before;
        }
        bool operator==(const Iterator&) const = default;

    private:
        const KdbxXMLNode* m_node = nullptr;
    };

    [[nodiscard]] bool empty() const { return m_first == nullptr; }
    [[nodiscard]] Iterator begin() const { return Iterator(m_first); }
    [[nodiscard]] Iterator end() const { return {}; }

private:
    friend class XMLTreeBuilder;
    const KdbxXMLNode* m_first = nullptr;
};

/// An XML element, and the carrier of everything foreign: it prints itself back as XML text. It is borrowed from the
/// tree that it belongs to, and from the bytes that were parsed.
struct KdbxXMLNode {
    /// A whole document as its root element, which owns what it was parsed from. With a `stream`, protected values are
    /// unmasked at their end tags, in document order; without one, they are taken for plain. Nothing for anything that
    /// is not well-formed, or nested too deep for the stack.
    [[nodiscard]] static std::shared_ptr<const KdbxXMLNode> parse(ByteView data, InnerStreamCipher* stream);

    std::string_view name{};                   // as written, prefix included
    std::string_view text{};                   // all character data directly in the element, untrimmed
    const Text::Map<std::string>& attributes;  // without `Protected`
    KdbxXMLChildren children{};
    const KdbxXMLNode* nextSibling = nullptr;
    XMLName known = XMLName::foreign;
    bool isProtected = false;  // it carried Protected="True", in any letter case

    /// The first child of that name, or none.
    [[nodiscard]] const KdbxXMLNode* child(XMLName childName) const;
    [[nodiscard]] const KdbxXMLNode* child(std::string_view childName) const;
    /// `text` without white space and line ends around it.
    [[nodiscard]] std::string_view trimmedText() const;
    /// The element as XML text, protected values in the clear with `Protected` set.
    [[nodiscard]] std::string rawXMLString() const;
};

KdbxXMLChildren::Iterator& KdbxXMLChildren::Iterator::operator++() {
    m_node = m_node->nextSibling;
    return *this;
}
