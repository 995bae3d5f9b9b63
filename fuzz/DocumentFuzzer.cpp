// SPDX-License-Identifier: MIT
// What is read can be saved, and what is saved can be read. After one round nothing changes any more, but for the empty
// elements that every round adds to an entry. No text whatever makes a document that does not parse.
#include "core/document/KdbxXML.h"
#include "core/document/KdbxXMLEscape.h"
#include "core/model/KdbxError.h"
#include "fuzz/Growth.h"
#include "fuzz/Require.h"

#include <algorithm>
#include <array>

namespace {

KdbxXML::Document parsed(ByteView data) {
    NullStreamCipher stream;
    return KdbxXML::parse(data, stream, {4, 1}, {{.flags = 1, .data = {1, 2, 3}}});
}

Bytes written(const KdbxMeta& meta, const KdbxGroup& root) {
    NullStreamCipher stream;
    return KdbxXML::serialize({.meta = meta,
                               .root = root,
                               .cipher = KdbxCipher::aes256,
                               .kdf = KdfSettings::recommended(),
                               .compressed = true,
                               .formatVersion = {4, 1}},
                              stream, std::nullopt);
}

Bytes nextRound(ByteView data) {
    auto document = parsed(data);
    require(KdbxXML::preservedBinaries(document.root).size() <= 1);
    removeGrowth(document.root);
    return written(document.meta, document.root);
}

void checkRounds(ByteView data) {
    Bytes first;
    try {
        first = nextRound(data);
    } catch (const KdbxError&) {
        return;
    }
    const auto second = nextRound(first);
    require(nextRound(second) == second);
}

/// What a reader makes of the text of an element: the parser normalises line ends.
std::string readBack(std::string_view text) {
    auto expected = KdbxXMLEscape::sanitise(text);
    for (auto at = expected.find("\r\n"); at != std::string::npos; at = expected.find("\r\n", at + 1))
        expected.erase(at, 1);
    std::ranges::replace(expected, '\r', '\n');
    return expected;
}

/// `data` as a text that a user has typed everywhere.
void checkText(std::string_view text) {
    KdbxEntry entry;
    entry.title = entry.username = entry.url = entry.notes = text;
    entry.password = SecureString(text);
    entry.customFields.emplace(text, text);
    entry.protectedCustomFields.emplace(text);
    entry.tags = {std::string(text)};
    entry.autoTypeSequence = text;
    entry.autoTypeWindowAssociations = {{.window = std::string(text), .sequence = std::string(text)}};
    KdbxGroup root;
    root.name = root.notes = text;
    root.unknownXML = {std::string(text), "<F>" + KdbxXMLEscape::text(text) + "</F>"};
    root.entries.append(entry);
    KdbxMeta meta;
    meta.databaseName = text;

    const auto document = parsed(written(meta, root));
    const auto& read = document.root.entries[0];
    const auto expected = readBack(text);
    require(document.root.name == expected && read.title == expected && read.notes == expected);
    require(document.meta.databaseName == Text::trimmingWhitespaceAndNewlines(expected));
    require(read.password.value() == KdbxXMLEscape::sanitise(text));
    require(read.autoTypeWindowAssociations[0].window == expected);
    const auto isStandard = std::ranges::any_of(std::array{"Title", "UserName", "Password", "URL", "Notes"},
                                                [&](auto key) { return Text::equal(key, expected); });
    require(isStandard || read.customFields.begin()->first == expected);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    checkRounds({data, size});
    checkText(Text::repairingUTF8({data, size}));
    return 0;
}
