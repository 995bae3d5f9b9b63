// SPDX-License-Identifier: MIT
#pragma once

#include "core/document/XMLText.h"
#include "core/text/Text.h"

#include <string>
#include <string_view>

/// Elements as XML text, for `KdbxXMLNode` and `XMLElement` alike.
namespace XMLPrinting {

/// Each attribute behind a blank, in the order of the keys.
inline void appendAttributes(Bytes& out, const Text::Map<std::string>& attributes) {
    for (const auto& [key, value] : attributes) {
        if (key == "Protected")
            continue;  // the element's own mark tells
        XMLText::appendRaw(out, " ");
        XMLText::appendRaw(out, key);
        XMLText::appendRaw(out, "=\"");
        XMLText::appendAttributeValue(out, value);
        XMLText::appendRaw(out, "\"");
    }
}

inline void appendEndTag(Bytes& out, std::string_view name) {
    XMLText::appendRaw(out, "</");
    XMLText::appendRaw(out, name);
    XMLText::appendRaw(out, ">");
}

/// An element from behind its attributes to its end. Its own text is dropped where it has child elements.
template <class Element, class AppendChild>
void appendFromAttributes(Bytes& out, const Element& element, AppendChild appendChild) {
    if (element.children.empty() && element.text.empty())
        return XMLText::appendRaw(out, "/>");
    XMLText::appendRaw(out, ">");
    if (element.children.empty())
        XMLText::appendContent(out, element.text);
    for (const auto& child : element.children)
        appendChild(child);
    appendEndTag(out, element.name);
}

/// An element in the clear, where the mark alone tells that it is protected.
template <class Element>
void appendElement(Bytes& out, const Element& element) {
    XMLText::appendRaw(out, "<");
    XMLText::appendRaw(out, element.name);
    appendAttributes(out, element.attributes);
    if (element.isProtected)
        XMLText::appendRaw(out, " Protected=\"True\"");
    appendFromAttributes(out, element, [&](const auto& child) { appendElement(out, child); });
}

}  // namespace XMLPrinting
