// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"
#include "core/primitives/InnerStreamCipher.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The document inside a vault: XML to model and back.
namespace KdbxXML {

/// An attachment of the pool, which the program carries along and never looks into.
struct Binary {
    std::uint8_t flags = 0;
    Bytes data;
    bool operator==(const Binary&) const = default;
};

/// What a document holds.
struct Document {
    KdbxMeta meta;
    KdbxGroup root;                   // with the preserved wrappers in its `unknownXML`
    std::optional<Bytes> headerHash;  // of a KDBX 3 document; its reader checks it
};

/// Reads a document. Lenient by rule: a bad value falls back, and only the structure can fail.
///
/// `stream` is newly started and unmasks the protected values; `binaries` is the attachment pool of the inner header,
/// empty for KDBX 3. `version` decides nothing.
///
/// @throws KdbxError xmlParseFailure.
[[nodiscard]] Document parse(ByteView data, InnerStreamCipher& stream, KdbxFormatVersion version,
                             const std::vector<Binary>& binaries);

/// The attachment pool kept with the root group, in order.
[[nodiscard]] std::vector<Binary> preservedBinaries(const KdbxGroup& root);

/// Whether the document itself had attachments, as those of KDBX 3 do. No document that is written here has any.
[[nodiscard]] bool hadDocumentBinaries(const KdbxGroup& root);

/// "true" and "1", "false" and "0", in any letter case, untrimmed; anything else is none.
[[nodiscard]] std::optional<bool> parseBool(std::string_view text);

/// The pieces between ";" and ",", trimmed of white space, without the empty ones.
[[nodiscard]] std::vector<std::string> splitTags(std::string_view text);

/// The document of a vault in UTF-8, in `database.formatVersion`.
///
/// @throws KdbxError nestedTooDeep for one that could not be read again.
[[nodiscard]] Bytes serialize(const KdbxDatabase& database, InnerStreamCipher& stream,
                              const std::optional<Bytes>& headerHash);

}  // namespace KdbxXML
