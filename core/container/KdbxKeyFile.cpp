// SPDX-License-Identifier: MIT
// Key files: two XML forms, 32 raw bytes, 64 hexadecimal digits, and any other file by its hash.
#include "core/container/KdbxKeys.h"
#include "core/document/KdbxXMLNode.h"
#include "core/model/KdbxError.h"
#include "core/primitives/Base64.h"
#include "core/primitives/Hexadecimal.h"
#include "core/primitives/Sha2.h"
#include "core/text/Text.h"

#include <algorithm>

namespace KdbxKeys {
namespace {

constexpr std::size_t keySize = 32;        // of a key that needs no hash
constexpr std::size_t sniffedSize = 256;   // bytes in which XML has to show itself
constexpr std::size_t hashPrefixSize = 4;  // bytes of its hash that version 2 keeps beside a key

bool looksLikeXML(ByteView data) {
    const auto beginning = data.first(std::min(data.size(), sniffedSize));
    if (!Text::isValidUTF8(beginning))
        return false;
    const auto text = textOf(beginning);
    return text.find("<KeyFile") != std::string_view::npos || text.find("<?xml") != std::string_view::npos;
}

const KdbxXMLNode* grandchild(const KdbxXMLNode& root, std::string_view childName, std::string_view grandchildName) {
    const auto* child = root.child(childName);
    return child ? child->child(grandchildName) : nullptr;
}

bool isVersion2(const KdbxXMLNode& root) {
    const auto* version = grandchild(root, "Meta", "Version");
    if (!version)
        return false;
    const auto characters = Text::characters(version->trimmedText());
    return !characters.empty() && characters.front() == "2";
}

/// What is left of a text without its white-space characters. It may be a key, so it is wiped.
Bytes withoutWhitespace(std::string_view text) {
    Bytes rest;
    rest.reserve(text.size());
    for (const auto character : Text::characters(text)) {
        if (!Text::trimmingWhitespaceAndNewlines(character).empty())
            append(rest, bytesOf(character));
    }
    return rest;
}

KeyFileResult version1Key(const KdbxXMLNode& data) {
    const auto text = withoutWhitespace(data.trimmedText());
    auto decoded = Base64::decodeStrict(textOf(text));
    if (!decoded)
        throw KdbxError::corruptedData("v1 anahtar dosyası base64 değil");
    return {decoded->size() == keySize ? std::move(*decoded) : Sha2::sha256(*decoded), KeyFileKind::xmlV1};
}

/// The first bytes of a key's hash as the file's author could have read them out: "%02X" each.
std::string hashPrefix(ByteView key) {
    return hexadecimal(ByteView(Sha2::sha256(key)).first(hashPrefixSize), HexLetters::upper);
}

KeyFileResult version2Key(const KdbxXMLNode& data) {
    const auto text = withoutWhitespace(data.trimmedText());
    auto decoded = hexDecode(textOf(text));
    if (!decoded || decoded->empty())
        throw KdbxError::corruptedData("v2 anahtar dosyası onaltılık değil");
    const auto hash = data.attributes.find("Hash");
    if (hash != data.attributes.end()) {
        const auto claimed = withoutWhitespace(hash->second);
        if (!constantTimeEquals(bytesOf(Text::uppercased(textOf(claimed))), bytesOf(hashPrefix(*decoded))))
            throw KdbxError::corruptedData("anahtar dosyası bütünlük kontrolünden geçemedi");
    }
    return {std::move(*decoded), KeyFileKind::xmlV2};
}

/// Nothing for a file that is no XML key file, broken XML included: such a file is a key file of another kind.
std::optional<KeyFileResult> parseXMLKeyFile(ByteView data) {
    if (!looksLikeXML(data))
        return std::nullopt;
    const auto root = KdbxXMLNode::parse(data, nullptr);
    if (!root || !Text::equal(root->name, "KeyFile"))
        return std::nullopt;
    const auto* key = grandchild(*root, "Key", "Data");
    if (!key)
        throw KdbxError::corruptedData("anahtar dosyasında <Key><Data> yok");
    return isVersion2(*root) ? version2Key(*key) : version1Key(*key);
}

}  // namespace

KeyFileResult keyFileKey(ByteView data) {
    if (auto result = parseXMLKeyFile(data))
        return std::move(*result);
    if (data.size() == keySize)
        return {copyOf(data), KeyFileKind::rawBinary32};
    if (data.size() == 2 * keySize) {
        if (auto decoded = hexDecode(textOf(data)))
            return {std::move(*decoded), KeyFileKind::hex64};
    }
    return {Sha2::sha256(data), KeyFileKind::hashed};
}

}  // namespace KdbxKeys
