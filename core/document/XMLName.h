// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

/// The element names that the document's schema gives a meaning to; every other is foreign.
enum class XMLName : std::uint8_t {
    foreign,
    document,
    association,
    autoType,
    binaries,
    binary,
    creationTime,
    databaseDescription,
    databaseName,
    defaultAutoTypeSequence,
    defaultSequence,
    defaultUserName,
    enabled,
    entry,
    expires,
    expiryTime,
    generator,
    group,
    headerHash,
    history,
    historyMaxItems,
    historyMaxSize,
    iconID,
    isExpanded,
    key,
    keystrokeSequence,
    lastAccessTime,
    lastModificationTime,
    memoryProtection,
    meta,
    name,
    notes,
    protectNotes,
    protectPassword,
    protectTitle,
    protectURL,
    protectUserName,
    recycleBinEnabled,
    recycleBinUUID,
    root,
    string,
    tags,
    times,
    uuid,
    value,
    window,
};

/// The meaning of a name, up to canonical equivalence.
[[nodiscard]] XMLName knownName(std::string_view name);

/// Whether anything reads the text of such an element where it has child elements. Of a foreign one these are printed
/// and the text is not.
[[nodiscard]] bool isReadBesideChildren(XMLName name);
