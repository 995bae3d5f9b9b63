// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/InnerStreamCipher.h"
#include "core/text/Text.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// An XML element, and the carrier of everything foreign: it prints itself back as XML text.
/// Its text is wiped when it goes.
class KdbxXMLNode {
public:
    /// Parses a whole document. With a `stream`, protected values are unmasked at their end tags, in document order;
    /// without one, they are taken for plain. Nothing for anything that is not well-formed, or nested too deep for
    /// the stack.
    [[nodiscard]] static std::optional<KdbxXMLNode> parse(ByteView data, InnerStreamCipher* stream);

    KdbxXMLNode() = default;
    KdbxXMLNode(const KdbxXMLNode&) = default;
    KdbxXMLNode& operator=(const KdbxXMLNode&) = default;
    KdbxXMLNode(KdbxXMLNode&& other) noexcept;
    KdbxXMLNode& operator=(KdbxXMLNode&& other) noexcept;
    ~KdbxXMLNode();

    std::string name;                   // as written, prefix included
    Text::Map<std::string> attributes;  // without `Protected`
    std::string text;                   // all character data directly in the element, untrimmed
    std::vector<KdbxXMLNode> children;  // in document order
    bool isProtected = false;           // it carried Protected="True", in any letter case

    /// The first child of that name, or none.
    [[nodiscard]] const KdbxXMLNode* child(std::string_view childName) const;
    /// All children of that name, in order.
    [[nodiscard]] std::vector<const KdbxXMLNode*> childrenNamed(std::string_view childName) const;
    /// `text` without white space and line ends around it.
    [[nodiscard]] std::string_view trimmedText() const;
    /// The element as XML text, protected values in the clear with their mark.
    [[nodiscard]] std::string rawXMLString() const;
};
