// SPDX-License-Identifier: MIT
#pragma once

#include "core/document/XMLText.h"
#include "core/text/Text.h"

#include <string>
#include <string_view>

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

/// An element from behind its attributes to its end. Its own text is dropped where it has child elements.
template <class Element, class AppendChild>
void appendFromAttributes(WipingText& out, const Element& element, AppendChild appendChild) {
    if (element.children.empty() && element.text.empty())
        return out.append("/>");
    out.append(">");
    if (element.children.empty())
        XMLText::appendContent(out, element.text);
    for (const auto& child : element.children)
        appendChild(child);
    appendEndTag(out, element.name);
}

/// An element in the clear, where the mark alone tells that it is protected.
template <class Element>
void appendElement(WipingText& out, const Element& element) {
    out.append("<");
    out.append(element.name);
    appendAttributes(out, element.attributes);
    if (element.isProtected)
        out.append(" Protected=\"True\"");
    appendFromAttributes(out, element, [&](const auto& child) { appendElement(out, child); });
}

}  // namespace XMLPrinting
