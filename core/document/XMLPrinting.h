// SPDX-License-Identifier: MIT
#pragma once

#include "core/document/KdbxXMLNode.h"
#include "core/document/XMLText.h"

#include <string>
#include <string_view>
#include <vector>

/// Elements as XML text.
namespace XMLPrinting {

/// Each attribute behind a blank, in the order of the keys.
inline void appendAttributes(WipingText& out, const Text::Map<std::string>& attributes) {
    for (const auto& [key, value] : attributes) {
        if (key == "Protected")
            continue;  // the element itself knows whether it is
        out.append(" ");
        out.append(key);
        out.append("=\"");
        XMLText::appendAttributeValue(out, value);
        out.append("\"");
    }
}

inline void appendEndTag(WipingText& out, std::string_view name) {
    out.append("</");
    out.append(name);
    out.append(">");
}

/// Prints an element and all in it, without recursion: foreign elements may be nested deep. `appendBeginning` prints
/// one element as far as its first child element, or whole, and returns whether it stopped for the child elements.
template <class AppendBeginning>
void appendTree(WipingText& out, const KdbxXMLNode& root, AppendBeginning appendBeginning) {
    struct Open {
        const KdbxXMLNode* element;
        KdbxXMLChildren::Iterator nextChild;
    };
    std::vector<Open> open;
    const auto begin = [&](const KdbxXMLNode& element) {
        if (appendBeginning(element))
            open.push_back({&element, element.children.begin()});
    };
    begin(root);
    while (!open.empty()) {
        auto& [element, nextChild] = open.back();
        if (nextChild != element->children.end()) {
            begin(*nextChild++);
        } else {
            appendEndTag(out, element->name);
            open.pop_back();
        }
    }
}

/// What follows an element's attributes, up to its first child element. Its own text is dropped where it has any.
inline bool appendFromAttributes(WipingText& out, const KdbxXMLNode& element) {
    if (element.children.empty() && element.text.empty()) {
        out.append("/>");
        return false;
    }
    out.append(">");
    if (!element.children.empty())
        return true;
    XMLText::appendContent(out, element.text);
    appendEndTag(out, element.name);
    return false;
}

/// An element in the clear, where `Protected` alone shows that it is to be masked.
inline void appendElement(WipingText& out, const KdbxXMLNode& root) {
    appendTree(out, root, [&](const KdbxXMLNode& element) {
        out.append("<");
        out.append(element.name);
        appendAttributes(out, element.attributes);
        if (element.isProtected)
            out.append(" Protected=\"True\"");
        return appendFromAttributes(out, element);
    });
}

}  // namespace XMLPrinting
