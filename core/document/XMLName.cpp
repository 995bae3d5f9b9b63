// SPDX-License-Identifier: MIT
#include "core/document/XMLName.h"

#include <algorithm>
#include <iterator>
#include <string>

XMLName knownName(std::string_view name) {
    // The Kelvin sign is the one code point outside ASCII that may occur in an element's name and is equivalent to a
    // letter of these.
    constexpr std::string_view kelvinSign = "\xE2\x84\xAA";
    std::string plain;
    for (std::size_t i = 0; i < name.size();) {
        const bool isKelvinSign = name.substr(i).starts_with(kelvinSign);
        plain += isKelvinSign ? 'K' : name[i];
        i += isKelvinSign ? kelvinSign.size() : 1;
    }
    const auto* const found = std::ranges::find(knownNames, plain, &std::pair<std::string_view, XMLName>::first);
    return found == std::end(knownNames) ? XMLName::foreign : found->second;
}

bool isReadBesideChildren(XMLName name) {
    switch (name) {
        case XMLName::document:
        case XMLName::association:
        case XMLName::autoType:
        case XMLName::entry:
        case XMLName::group:
        case XMLName::history:
        case XMLName::meta:
        case XMLName::root:
        case XMLName::string:
        case XMLName::times:
        case XMLName::foreign:
            return false;
        default:
            return true;
    }
}
