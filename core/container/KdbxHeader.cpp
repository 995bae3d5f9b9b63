// SPDX-License-Identifier: MIT
#include "core/container/KdbxHeader.h"

#include "core/container/KdbxCrypto.h"
#include "core/container/KdbxKeyDerivation.h"
#include "core/container/KdbxReader.h"
#include "core/model/KdbxError.h"
#include "core/primitives/LittleEndian.h"
#include "core/primitives/Precondition.h"

#include <array>
#include <limits>

namespace {

using FieldID = KdbxHeader::FieldID;

constexpr std::size_t preambleSize = 12;    // two signatures and the version
constexpr std::size_t masterSeedSize = 32;  // as long as the digest that it is hashed with

// Readers drop it. Line ends that a transfer as text would change are what other formats too begin or end with (PNG,
// RFC 2083, section 12.11).
constexpr std::array<std::uint8_t, 4> endOfHeaderValue{0x0D, 0x0A, 0x0D, 0x0A};

// What a KDBX 3 file means that does not name its inner stream.
constexpr auto defaultInnerStreamID = static_cast<std::uint32_t>(KdbxCrypto::InnerStreamID::salsa20);

void readPreamble(KdbxReader& reader, KdbxHeader& header) {
    const auto first = reader.u32();
    const auto second = reader.u32();
    if (first != KdbxHeader::signature1 || second != KdbxHeader::signature2)
        throw KdbxError::notAKdbxFile();
    header.minor = reader.u16();
    header.major = reader.u16();
    const bool isKnown = header.major == 3 || (header.major == 4 && header.minor <= 1);
    if (!isKnown)
        throw KdbxError::unsupportedVersion(header.major, header.minor);
}

void storeCipherID(KdbxHeader& header, ByteView value) {
    const auto id = UUID::fromKdbxBytes(value);
    if (!id)
        throw KdbxError::corruptedData("CipherID 16 bayt değil");
    header.cipherUUID = *id;
}

void storeCompressionFlags(KdbxHeader& header, ByteView value) {
    header.compressionFlags = leadingLE<std::uint32_t>(value);
    if (header.compressionFlags > 1)
        throw KdbxError::corruptedData("bilinmeyen sıkıştırma bayrağı " + std::to_string(header.compressionFlags));
}

void storeField(KdbxHeader& header, FieldID id, ByteView value) {
    switch (id) {
        case FieldID::endOfHeader:
            break;
        case FieldID::comment:
            header.comment = copyOf(value);
            break;
        case FieldID::cipherID:
            storeCipherID(header, value);
            break;
        case FieldID::compressionFlags:
            storeCompressionFlags(header, value);
            break;
        case FieldID::masterSeed:
            header.masterSeed = copyOf(value);
            break;
        case FieldID::transformSeed:
            header.transformSeed = copyOf(value);
            break;
        case FieldID::transformRounds:
            header.transformRounds = leadingLE<std::uint64_t>(value);
            break;
        case FieldID::encryptionIV:
            header.encryptionIV = copyOf(value);
            break;
        case FieldID::innerRandomStreamKey:
            header.innerRandomStreamKey = copyOf(value);
            break;
        case FieldID::streamStartBytes:
            header.streamStartBytes = copyOf(value);
            break;
        case FieldID::innerRandomStreamID:
            header.innerRandomStreamID = leadingLE<std::uint32_t>(value);
            break;
        case FieldID::kdfParameters:
            header.kdfParameters = VariantDictionary::parse(value);
            break;
        case FieldID::publicCustomData:
            header.publicCustomData = VariantDictionary::parse(value);
            break;
    }
}

void readFields(KdbxReader& reader, KdbxHeader& header) {
    FieldID id{};
    do {
        id = FieldID{reader.u8()};
        const std::int64_t length = header.isKdbx4() ? reader.u32() : reader.u16();
        storeField(header, id, reader.read(length));
    } while (id != FieldID::endOfHeader);
}

void checkRequiredFields(const KdbxHeader& header) {
    if (header.masterSeed.size() != masterSeedSize)
        throw KdbxError::corruptedData("MasterSeed 32 bayt olmalı");
    if (header.isKdbx4()) {
        if (!header.kdfParameters)
            throw KdbxError::corruptedData("KDBX 4 başlığında KdfParameters yok");
        return;
    }
    if (!header.transformSeed || !header.transformRounds || !header.streamStartBytes || !header.innerRandomStreamKey)
        throw KdbxError::corruptedData("KDBX 3 başlığında zorunlu alanlar eksik");
}

/// Writes fields one behind the other, in the lengths of the header's version.
class FieldWriter {
public:
    FieldWriter(Bytes& out, bool isKdbx4) : m_out(out), m_isKdbx4(isKdbx4) {}

    void field(FieldID id, ByteView value) {
        m_out.push_back(static_cast<std::uint8_t>(id));
        if (m_isKdbx4) {
            appendLE(m_out, static_cast<std::uint32_t>(value.size()));
        } else {
            // Saving always writes KDBX 4, so no file's content comes here at such a size.
            precondition(value.size() <= std::numeric_limits<std::uint16_t>::max());
            appendLE(m_out, static_cast<std::uint16_t>(value.size()));
        }
        append(m_out, value);
    }

    template <std::integral Number>
    void number(FieldID id, Number number) {
        Bytes value;
        appendLE(value, number);
        field(id, value);
    }

    void orEmpty(FieldID id, const std::optional<Bytes>& value) { field(id, value ? ByteView(*value) : ByteView()); }

private:
    Bytes& m_out;
    bool m_isKdbx4;
};

}  // namespace

KdbxHeader KdbxHeader::parse(ByteView data) {
    if (data.size() < preambleSize)
        throw KdbxError::notAKdbxFile();
    KdbxHeader header;
    KdbxReader reader(data);
    readPreamble(reader, header);
    readFields(reader, header);
    header.endOffset = reader.offset();
    header.rawData = copyOf(data.first(static_cast<std::size_t>(reader.offset())));
    checkRequiredFields(header);
    return header;
}

Bytes KdbxHeader::serialize() const {
    Bytes out;
    appendLE(out, signature1);
    appendLE(out, signature2);
    appendLE(out, minor);
    appendLE(out, major);

    FieldWriter writer(out, isKdbx4());
    if (comment)
        writer.field(FieldID::comment, *comment);
    writer.field(FieldID::cipherID, cipherUUID.kdbxBytes());
    writer.number(FieldID::compressionFlags, compressionFlags);
    writer.field(FieldID::masterSeed, masterSeed);
    if (!isKdbx4()) {
        writer.orEmpty(FieldID::transformSeed, transformSeed);
        writer.number(FieldID::transformRounds, transformRounds.value_or(KdbxKeyDerivation::defaultRounds));
        writer.field(FieldID::encryptionIV, encryptionIV);
        writer.orEmpty(FieldID::innerRandomStreamKey, innerRandomStreamKey);
        writer.orEmpty(FieldID::streamStartBytes, streamStartBytes);
        writer.number(FieldID::innerRandomStreamID, innerRandomStreamID.value_or(defaultInnerStreamID));
    } else {
        writer.field(FieldID::encryptionIV, encryptionIV);
        if (kdfParameters)
            writer.field(FieldID::kdfParameters, kdfParameters->serialize());
        if (publicCustomData && !publicCustomData->isEmpty())
            writer.field(FieldID::publicCustomData, publicCustomData->serialize());
    }
    writer.field(FieldID::endOfHeader, endOfHeaderValue);
    return out;
}

KdbxCipher KdbxHeader::cipher() const {
    if (cipherUUID == KdbxUUIDs::aes256())
        return KdbxCipher::aes256;
    if (cipherUUID == KdbxUUIDs::chacha20())
        return KdbxCipher::chacha20;
    if (cipherUUID == KdbxUUIDs::twofish())
        throw KdbxError::unsupportedCipher("Twofish");
    throw KdbxError::unsupportedCipher(cipherUUID.text());
}

KdfSettings KdbxHeader::kdfSettings() const {
    if (!isKdbx4())
        return {KdfSettings::AesKdf{transformRounds.value_or(KdbxKeyDerivation::defaultRounds)}};
    return KdbxKeyDerivation::settings(kdfParameters.value_or(VariantDictionary()));
}

VariantDictionary KdbxHeader::derivationParameters() const {
    if (isKdbx4())
        return kdfParameters.value_or(VariantDictionary());
    if (!transformSeed || !transformRounds)
        throw KdbxError::corruptedData("KDBX 3 dönüştürme parametreleri eksik");
    return kdfParametersFor({KdfSettings::AesKdf{*transformRounds}}, *transformSeed);
}

VariantDictionary KdbxHeader::kdfParametersFor(const KdfSettings& settings, ByteView salt) {
    return KdbxKeyDerivation::parameters(settings, salt);
}
