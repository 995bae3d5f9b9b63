// SPDX-License-Identifier: MIT
#include "core/document/KdbxXMLEscape.h"

#include "core/document/XMLText.h"
#include "core/text/Text.h"

namespace KdbxXMLEscape {

std::string sanitise(std::string_view text) {
    WipingText sanitised;
    XMLText::appendSanitised(sanitised, text);
    return std::string(sanitised.view());
}

std::string text(std::string_view text) {
    std::string escaped;
    const auto sanitised = sanitise(text);
    for (const auto character : Text::characters(sanitised)) {
        if (character == "&")
            escaped += "&amp;";
        else if (character == "<")
            escaped += "&lt;";
        else if (character == ">")
            escaped += "&gt;";
        else
            escaped += character;
    }
    return escaped;
}

}  // namespace KdbxXMLEscape
