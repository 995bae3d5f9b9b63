// SPDX-License-Identifier: MIT
#include "core/document/KdbxXMLNode.h"

#include "core/document/XMLPrinting.h"
#include "core/document/XMLTree.h"

#include <algorithm>

namespace {

/// A tree with the bytes that it borrows from.
struct OwnedTree {
    Bytes data;
    XMLTree tree{KeptText::all};
};

}  // namespace

std::shared_ptr<const KdbxXMLNode> KdbxXMLNode::parse(ByteView data, InnerStreamCipher* stream) {
    const auto owned = std::make_shared<OwnedTree>();
    owned->data = copyOf(data);
    return {owned, owned->tree.parse(owned->data, stream)};
}

const KdbxXMLNode* KdbxXMLNode::child(XMLName childName) const {
    const auto found = std::ranges::find(children, childName, &KdbxXMLNode::known);
    return found == children.end() ? nullptr : &*found;
}

const KdbxXMLNode* KdbxXMLNode::child(std::string_view childName) const {
    const auto found =
        std::ranges::find_if(children, [&](const auto& node) { return Text::equal(node.name, childName); });
    return found == children.end() ? nullptr : &*found;
}

std::string_view KdbxXMLNode::trimmedText() const {
    // Most texts begin and end with a character that is plainly none to trim.
    const auto isPlain = [](char c) { return c > ' ' && c < 0x7F; };
    if (!text.empty() && isPlain(text.front()) && isPlain(text.back()))
        return text;
    return Text::trimmingWhitespaceAndNewlines(text);
}

std::string KdbxXMLNode::rawXMLString() const {
    WipingText out;  // wiped as it grows: protected values are in the clear here
    XMLPrinting::appendElement(out, *this);
    return std::string(out.view());
}
