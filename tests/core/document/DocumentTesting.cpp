// SPDX-License-Identifier: MIT
#include "DocumentTesting.h"

#include "core/primitives/Base64.h"

namespace DocumentTesting {

std::vector<std::string> masked(const std::vector<std::string>& values) {
    CountingStream stream;
    std::vector<std::string> texts;
    for (const auto& value : values)
        texts.push_back(Base64::encode(stream.process(bytesOf(value))));
    return texts;
}

std::string document(const Parts& parts) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?><KeePassFile><Meta>" + parts.meta + "</Meta><Root><Group>" +
           parts.group + "</Group>" + parts.root + "</Root></KeePassFile>";
}

std::string documentOfEntry(std::string_view entryChildren) {
    return document({.meta = "", .group = "<Entry>" + std::string(entryChildren) + "</Entry>", .root = ""});
}

KdbxXML::Document parse(std::string_view xml, const std::vector<KdbxXML::Binary>& binaries) {
    NullStreamCipher stream;
    return KdbxXML::parse(bytesOf(xml), stream, {4, 1}, binaries);
}

KdbxEntry parseEntry(std::string_view entryChildren) {
    return parse(documentOfEntry(entryChildren)).root.entries[0];
}

KdbxGroup parseGroup(std::string_view groupChildren) {
    return parse(document({.meta = "", .group = std::string(groupChildren), .root = ""})).root;
}

KdbxMeta parseMeta(std::string_view metaChildren) {
    return parse(document({.meta = std::string(metaChildren), .group = "", .root = ""})).meta;
}

std::string failureOf(std::string_view xml) {
    try {
        static_cast<void>(parse(xml));
    } catch (const KdbxError& error) {
        return std::holds_alternative<KdbxError::XmlParseFailure>(error.failure()) ? error.errorDescription()
                                                                                   : "another failure";
    }
    return "none";
}

KdbxDatabase database(KdbxMeta meta, KdbxGroup root, std::uint16_t major) {
    return {.meta = std::move(meta),
            .root = std::move(root),
            .cipher = KdbxCipher::aes256,
            .kdf = KdfSettings::recommended(),
            .compressed = true,
            .formatVersion = {major, 1}};
}

std::string written(const KdbxDatabase& database, const std::optional<Bytes>& headerHash) {
    NullStreamCipher stream;
    return std::string(textOf(KdbxXML::serialize(database, stream, headerHash)));
}

std::string rewritten(std::string_view xml) {
    auto document = parse(xml);
    return written(database(std::move(document.meta), std::move(document.root)));
}

std::string between(const std::string& text, std::string_view begin, std::string_view end) {
    const auto first = text.find(begin);
    const auto last = first == std::string::npos ? first : text.find(end, first + begin.size());
    return last == std::string::npos ? "not found" : text.substr(first, last + end.size() - first);
}

std::string repeated(std::string_view text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

}  // namespace DocumentTesting
