// SPDX-License-Identifier: MIT
#include "core/document/XMLName.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace {

constexpr std::pair<std::string_view, XMLName> knownNames[] = {
    {"Association", XMLName::association},
    {"AutoType", XMLName::autoType},
    {"Binaries", XMLName::binaries},
    {"Binary", XMLName::binary},
    {"CreationTime", XMLName::creationTime},
    {"DatabaseDescription", XMLName::databaseDescription},
    {"DatabaseName", XMLName::databaseName},
    {"DefaultAutoTypeSequence", XMLName::defaultAutoTypeSequence},
    {"DefaultSequence", XMLName::defaultSequence},
    {"DefaultUserName", XMLName::defaultUserName},
    {"Enabled", XMLName::enabled},
    {"Entry", XMLName::entry},
    {"Expires", XMLName::expires},
    {"ExpiryTime", XMLName::expiryTime},
    {"Generator", XMLName::generator},
    {"Group", XMLName::group},
    {"HeaderHash", XMLName::headerHash},
    {"History", XMLName::history},
    {"HistoryMaxItems", XMLName::historyMaxItems},
    {"HistoryMaxSize", XMLName::historyMaxSize},
    {"IconID", XMLName::iconID},
    {"IsExpanded", XMLName::isExpanded},
    {"KeePassFile", XMLName::document},
    {"Key", XMLName::key},
    {"KeystrokeSequence", XMLName::keystrokeSequence},
    {"LastAccessTime", XMLName::lastAccessTime},
    {"LastModificationTime", XMLName::lastModificationTime},
    {"MemoryProtection", XMLName::memoryProtection},
    {"Meta", XMLName::meta},
    {"Name", XMLName::name},
    {"Notes", XMLName::notes},
    {"ProtectNotes", XMLName::protectNotes},
    {"ProtectPassword", XMLName::protectPassword},
    {"ProtectTitle", XMLName::protectTitle},
    {"ProtectURL", XMLName::protectURL},
    {"ProtectUserName", XMLName::protectUserName},
    {"RecycleBinEnabled", XMLName::recycleBinEnabled},
    {"RecycleBinUUID", XMLName::recycleBinUUID},
    {"Root", XMLName::root},
    {"String", XMLName::string},
    {"Tags", XMLName::tags},
    {"Times", XMLName::times},
    {"UUID", XMLName::uuid},
    {"Value", XMLName::value},
    {"Window", XMLName::window},
};

}  // namespace

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
