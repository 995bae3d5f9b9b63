// SPDX-License-Identifier: MIT
#include "tests/core/container/VaultBuilder.h"

#include "core/container/KdbxCrypto.h"
#include "core/container/KdbxKeys.h"
#include "core/primitives/Gzip.h"
#include "core/primitives/LittleEndian.h"
#include "core/primitives/Sha2.h"

#include <algorithm>

namespace {

/// Bytes that look random and are the same each time, so that a failure can be met again.
Bytes fixedBytes(std::size_t size, std::string_view name) {
    Bytes bytes;
    while (bytes.size() < size)
        append(bytes, Sha2::sha256({bytesOf(name), bytes}));
    bytes.resize(size);
    return bytes;
}

template <class Number>
Bytes littleEndian(Number number) {
    Bytes bytes;
    appendLE(bytes, number);
    return bytes;
}

/// The keys of a header, unless the fault is that it has none.
std::optional<KdbxKeys::DerivedKeys> keysOf(ByteView header, const KdbxKey& key) {
    try {
        return KdbxKeys::derive(KdbxKeys::compositeKey(key), KdbxHeader::parse(header));
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

}  // namespace

VaultBuilder VaultBuilder::kdbx4() {
    VaultBuilder builder;
    builder.document = smallDocument();
    builder.innerHeader.streamKey = fixedBytes(64, "inner");
    builder.set(FieldID::cipherID, KdbxUUIDs::aes256().kdbxBytes())
        .set(FieldID::compressionFlags, littleEndian(std::uint32_t{1}))
        .set(FieldID::masterSeed, fixedBytes(32, "seed"))
        .set(FieldID::encryptionIV, fixedBytes(16, "iv"))
        .setKdf({KdfSettings::AesKdf{1}});
    return builder;
}

VaultBuilder VaultBuilder::kdbx3() {
    VaultBuilder builder;
    builder.version = {.major = 3, .minor = 1};
    builder.document = smallDocument();
    builder.set(FieldID::cipherID, KdbxUUIDs::aes256().kdbxBytes())
        .set(FieldID::compressionFlags, littleEndian(std::uint32_t{1}))
        .set(FieldID::masterSeed, fixedBytes(32, "seed"))
        .set(FieldID::transformSeed, fixedBytes(32, "transform"))
        .set(FieldID::transformRounds, littleEndian(std::uint64_t{1}))
        .set(FieldID::encryptionIV, fixedBytes(16, "iv"))
        .set(FieldID::innerRandomStreamKey, fixedBytes(32, "inner"))
        .set(FieldID::streamStartBytes, fixedBytes(32, "start"))
        .set(FieldID::innerRandomStreamID, littleEndian(std::uint32_t{2}));
    return builder;
}

VaultBuilder& VaultBuilder::set(FieldID id, ByteView value) {
    const auto tag = static_cast<std::uint8_t>(id);
    const auto place = std::ranges::find(m_fields, tag, &std::pair<std::uint8_t, Bytes>::first);
    if (place == m_fields.end())
        return add(tag, value);
    place->second = copyOf(value);
    return *this;
}

VaultBuilder& VaultBuilder::remove(FieldID id) {
    std::erase_if(m_fields, [&](const auto& field) { return field.first == static_cast<std::uint8_t>(id); });
    return *this;
}

VaultBuilder& VaultBuilder::add(std::uint8_t tag, ByteView value) {
    m_fields.emplace_back(tag, copyOf(value));
    return *this;
}

VaultBuilder& VaultBuilder::setParameter(std::string_view name, std::optional<VariantValue> value) {
    auto parameters = VariantDictionary::parse(field(FieldID::kdfParameters));
    if (value)
        parameters.set(name, *value);
    else
        parameters.set(name, std::nullopt);
    return set(FieldID::kdfParameters, parameters.serialize());
}

VaultBuilder& VaultBuilder::setKdf(const KdfSettings& settings) {
    return set(FieldID::kdfParameters, KdbxHeader::kdfParametersFor(settings, fixedBytes(32, "salt")).serialize());
}

VaultBuilder& VaultBuilder::setCipher(KdbxCipher cipher) {
    if (cipher == KdbxCipher::aes256)
        return set(FieldID::cipherID, KdbxUUIDs::aes256().kdbxBytes()).set(FieldID::encryptionIV, fixedBytes(16, "iv"));
    return set(FieldID::cipherID, KdbxUUIDs::chacha20().kdbxBytes())
        .set(FieldID::encryptionIV, fixedBytes(12, "nonce"));
}

VaultBuilder& VaultBuilder::setCompressed(bool isCompressed) {
    return set(FieldID::compressionFlags, littleEndian(std::uint32_t{isCompressed ? 1u : 0u}));
}

Bytes VaultBuilder::header() const {
    Bytes out;
    appendLE(out, KdbxHeader::signature1);
    appendLE(out, KdbxHeader::signature2);
    appendLE(out, version.minor);
    appendLE(out, version.major);
    const auto appendField = [&](std::uint8_t tag, ByteView value) {
        out.push_back(tag);
        if (version.major > 3)
            appendLE(out, static_cast<std::uint32_t>(value.size()));
        else
            appendLE(out, static_cast<std::uint16_t>(value.size()));
        append(out, value);
    };
    for (const auto& [tag, value] : m_fields)
        appendField(tag, value);
    appendField(0, bytesOf("\r\n\r\n"));
    return out;
}

Bytes VaultBuilder::build() const {
    auto file = header();
    append(file, version.major > 3 ? behindHeaderKdbx4(file) : behindHeaderKdbx3(file));
    return file;
}

ByteView VaultBuilder::field(FieldID id) const {
    for (const auto& [tag, value] : m_fields) {
        if (tag == static_cast<std::uint8_t>(id))
            return value;
    }
    return {};
}

Bytes VaultBuilder::compressedPayload() const {
    if (compressed)
        return *compressed;
    auto plain = payload.value_or(version.major > 3 ? innerHeader.serialize() : Bytes());
    if (!payload)
        append(plain, bytesOf(document));
    const auto flags = field(FieldID::compressionFlags);
    const bool isCompressed = flags.empty() || flags[0] == 1;
    return isCompressed ? Gzip::compress(plain) : plain;
}

Bytes VaultBuilder::enciphered(ByteView plain, ByteView masterKey) const {
    if (ciphertext)
        return *ciphertext;
    const auto id = field(FieldID::cipherID);
    const auto iv = field(FieldID::encryptionIV);
    const bool isChaCha20 = std::ranges::equal(id, KdbxUUIDs::chacha20().kdbxBytes());
    // Where the IV or the cipher is the fault, anything serves: a reader stops before it deciphers.
    if (iv.size() != (isChaCha20 ? 12 : 16))
        return copyOf(plain);
    return KdbxCrypto::encryptPayload(
        plain, {.cipher = isChaCha20 ? KdbxCipher::chacha20 : KdbxCipher::aes256, .key = masterKey, .iv = iv});
}

Bytes VaultBuilder::behindHeaderKdbx4(ByteView header) const {
    auto out = Sha2::sha256(header);
    const auto keys = keysOf(header, key);
    if (!keys) {
        out.resize(64, 0);
        return out;
    }
    append(out, KdbxCrypto::headerHMAC(header, {.key = *keys->hmac}));
    append(out,
           KdbxCrypto::writeHMACBlocks(enciphered(compressedPayload(), keys->master), {.key = *keys->hmac}, blockSize));
    return out;
}

Bytes VaultBuilder::behindHeaderKdbx3(ByteView header) const {
    const auto keys = keysOf(header, key);
    if (!keys)
        return {};
    auto plain = copyOf(field(FieldID::streamStartBytes));
    append(plain, blocks ? *blocks : KdbxCrypto::writeHashedBlocks(compressedPayload(), blockSize));
    return enciphered(plaintext.value_or(plain), keys->master);
}

std::string smallDocument() {
    return documentWith(
        "<Entry><UUID>AQIDBAUGBwgJCgsMDQ4PEA==</UUID>"
        "<String><Key>Title</Key><Value>Posta</Value></String>"
        "<String><Key>Password</Key><Value>gizli</Value></String></Entry>");
}

std::string documentWith(const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?><KeePassFile><Meta>"
           "<Generator>Test</Generator></Meta><Root><Group><UUID>AAECAwQFBgcICQoLDA0ODw==</UUID>"
           "<Name>Kasa</Name>" +
           content + "</Group></Root></KeePassFile>";
}
