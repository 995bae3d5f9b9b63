// SPDX-License-Identifier: MIT
#pragma once

#include "core/document/XMLText.h"
#include "core/text/Text.h"

#include <string>
#include <string_view>
#include <vector>

/// Elements as XML text, for `KdbxXMLNode` and `XMLElement` alike.
namespace XMLPrinting {

/// Each attribute behind a blank, in the order of the keys.
inline void appendAttributes(WipingText& out, const Text::Map<std::string>& attributes) {
    for (const auto& [key, value] : attributes) {
        if (key == "Protected")
            continue;  // the element's own mark tells
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
/// one element as far as its first child element, or whole, and tells whether it stopped for the child elements.
template <class Element, class AppendBeginning>
void appendTree(WipingText& out, const Element& root, AppendBeginning appendBeginning) {
    struct Open {
        const Element* element;
        decltype(root.children.begin()) nextChild;
    };
    std::vector<Open> open;
    const auto begin = [&](const Element& element) {
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
template <class Element>
bool appendFromAttributes(WipingText& out, const Element& element) {
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

/// An element in the clear, where the mark alone tells that it is protected.
template <class Element>
void appendElement(WipingText& out, const Element& root) {
    appendTree(out, root, [&](const Element& element) {
        out.append("<");
        out.append(element.name);
        appendAttributes(out, element.attributes);
        if (element.isProtected)
            out.append(" Protected=\"True\"");
        return appendFromAttributes(out, element);
    });
}

}  // namespace XMLPrinting
