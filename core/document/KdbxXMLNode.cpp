// SPDX-License-Identifier: MIT
#include "core/document/KdbxXMLNode.h"

#include "core/document/XMLPrinting.h"
#include "core/document/XMLTree.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

KdbxXMLNode nodeOf(const XMLElement& element) {
    KdbxXMLNode node;
    node.name = element.name;
    node.attributes = element.attributes;
    node.text = element.text;
    node.isProtected = element.isProtected;
    node.children.reserve(static_cast<std::size_t>(std::ranges::distance(element.children)));
    for (const auto& child : element.children)
        node.children.push_back(nodeOf(child));
    return node;
}

}  // namespace

std::optional<KdbxXMLNode> KdbxXMLNode::parse(ByteView data, InnerStreamCipher* stream) {
    XMLTree tree(XMLTree::KeptText::all);
    const auto* const root = tree.parse(data, stream);
    return root == nullptr ? std::nullopt : std::optional(nodeOf(*root));
}

KdbxXMLNode::KdbxXMLNode(KdbxXMLNode&& other) noexcept = default;

KdbxXMLNode& KdbxXMLNode::operator=(KdbxXMLNode&& other) noexcept {
    std::swap(name, other.name);
    std::swap(attributes, other.attributes);
    std::swap(text, other.text);
    std::swap(children, other.children);
    std::swap(isProtected, other.isProtected);
    return *this;
}

KdbxXMLNode::~KdbxXMLNode() {
    // A text that was moved away, or was longer before, may have left some of itself behind what is counted as its
    // size.
    text.resize(text.capacity());
    secureWipe(text.data(), text.size());
}

const KdbxXMLNode* KdbxXMLNode::child(std::string_view childName) const {
    const auto found =
        std::ranges::find_if(children, [&](const auto& node) { return Text::equal(node.name, childName); });
    return found == children.end() ? nullptr : &*found;
}

std::vector<const KdbxXMLNode*> KdbxXMLNode::childrenNamed(std::string_view childName) const {
    std::vector<const KdbxXMLNode*> found;
    for (const auto& node : children)
        if (Text::equal(node.name, childName))
            found.push_back(&node);
    return found;
}

std::string_view KdbxXMLNode::trimmedText() const {
    return Text::trimmingWhitespaceAndNewlines(text);
}

std::string KdbxXMLNode::rawXMLString() const {
    WipingText out;  // wiped as it grows: protected values are in the clear here
    XMLPrinting::appendElement(out, *this);
    return std::string(out.view());
}
