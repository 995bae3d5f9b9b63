// SPDX-License-Identifier: MIT
#include "core/document/KdbxXML.h"

#include "core/document/KdbxPreserve.h"
#include "core/document/KdbxXMLValues.h"
#include "core/document/KdbxXMLWriter.h"
#include "core/document/PreservedXML.h"
#include "core/primitives/Base64.h"

#include <algorithm>
#include <charconv>

namespace KdbxXML {
namespace {

constexpr std::uint8_t defaultFlags = 1;  // to be protected in memory: the one flag that the format has

std::uint8_t flagsOf(const KdbxXMLNode& binary) {
    const auto attribute = binary.attributes.find("Flags");
    if (attribute == binary.attributes.end())
        return defaultFlags;
    const auto flags = parseInteger(attribute->second);
    return flags && *flags >= 0 && *flags <= UINT8_MAX ? static_cast<std::uint8_t>(*flags) : defaultFlags;
}

bool isASCII(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// The text's whole characters: a mark that combines with a separator makes another character of it.
std::vector<std::string_view> charactersOf(std::string_view text) {
    if (!isASCII(text))
        return Text::characters(text);
    std::vector<std::string_view> characters;
    for (std::size_t i = 0; i < text.size(); ++i)
        characters.push_back(text.substr(i, 1));
    return characters;
}

}  // namespace

std::optional<std::int64_t> parseInteger(std::string_view text) {
    if (text.starts_with('+'))
        text = text.substr(text.starts_with("+-") ? text.size() : 1);
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

std::optional<UUID> parseUUID(std::string_view text) {
    const auto bytes = Base64::decodeStrict(text);
    return bytes ? UUID::fromKdbxBytes(*bytes) : std::nullopt;
}

std::optional<bool> parseBool(std::string_view text) {
    const auto lower = Text::lowercased(text);
    if (lower == "true" || lower == "1")
        return true;
    if (lower == "false" || lower == "0")
        return false;
    return std::nullopt;
}

std::vector<std::string> splitTags(std::string_view text) {
    std::vector<std::string> tags;
    std::string piece;
    const auto endPiece = [&] {
        if (const auto tag = Text::trimmingWhitespace(piece); !tag.empty())
            tags.emplace_back(tag);
        piece.clear();
    };
    for (const auto character : charactersOf(text)) {
        if (Text::equal(character, ";") || Text::equal(character, ","))
            endPiece();
        else
            piece += character;
    }
    endPiece();
    return tags;
}

std::vector<Binary> preservedBinaries(const KdbxGroup& root) {
    std::vector<Binary> binaries;
    PreservedXML preserved(KdbxPreserve::binaries, root);
    for (const auto& child : preserved.children())
        if (child.known == XMLName::binary)
            binaries.push_back(
                {.flags = flagsOf(child), .data = Base64::decodeStrict(child.trimmedText()).value_or(Bytes())});
    return binaries;
}

bool hadDocumentBinaries(const KdbxGroup& root) {
    const PreservedXML preserved(KdbxPreserve::meta, root);
    return std::ranges::any_of(preserved.children(), [](const KdbxXMLNode& child) {
        return child.known == XMLName::binaries && std::ranges::any_of(child.children, [](const KdbxXMLNode& item) {
                   return item.known == XMLName::binary;
               });
    });
}

Bytes serialize(const KdbxDatabase& database, InnerStreamCipher& stream, const std::optional<Bytes>& headerHash) {
    Writer writer(stream, database.formatVersion.major);
    writer.writeDocument(database, headerHash);
    return writer.takeOut();
}

}  // namespace KdbxXML
