// SPDX-License-Identifier: MIT
#include "core/container/KdbxHeader.h"

#include "core/container/KdbxReader.h"
#include "core/model/KdbxError.h"
#include "core/primitives/Argon2.h"
#include "core/primitives/LittleEndian.h"
#include "core/primitives/Overloaded.h"
#include "core/primitives/Precondition.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace KdbxUUIDs {
namespace {

UUID fromConstant(std::string_view text) {
    const auto id = UUID::fromText(text);
    precondition(id);  // only the constants below come here
    return *id;
}

}  // namespace

const UUID& aes256() {
    static const UUID id = fromConstant("31C1F2E6-BF71-4350-BE58-05216AFC5AFF");
    return id;
}

const UUID& chacha20() {
    static const UUID id = fromConstant("D6038A2B-8B6F-4CB5-A524-339A31DBB59A");
    return id;
}

const UUID& twofish() {
    static const UUID id = fromConstant("AD68F29F-576F-4BB9-A36A-D47AF965346C");
    return id;
}

const UUID& kdfAes() {
    static const UUID id = fromConstant("C9D9F39A-628A-4460-BF74-0D08C18A4FEA");
    return id;
}

const UUID& kdfAesKdbx3() {
    return kdfAes();
}

const UUID& kdfArgon2d() {
    static const UUID id = fromConstant("EF636DDF-8C29-444B-91F7-A9A403E30A0C");
    return id;
}

const UUID& kdfArgon2id() {
    static const UUID id = fromConstant("9E298B19-56DB-4773-B23D-FC3EC6F0A1E6");
    return id;
}

}  // namespace KdbxUUIDs

namespace {

using FieldID = KdbxHeader::FieldID;

constexpr std::size_t preambleSize = 12;
constexpr std::size_t masterSeedSize = 32;
constexpr std::uint64_t defaultMemory = 67'108'864;  // bytes: 64 MiB
constexpr std::uint64_t leastMemory = 8192;          // bytes
constexpr std::uint64_t defaultIterations = 2;
constexpr std::uint32_t defaultParallelism = 2;
constexpr std::array<std::uint8_t, 4> endMark{0x0D, 0x0A, 0x0D, 0x0A};

/// The number in a field's first bytes, and 0 where there are too few: other writers' slips are forgiven.
template <class Number>
Number leadingNumber(ByteView value) {
    return value.size() < sizeof(Number) ? 0 : loadLE<Number>(value.data());
}

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
    header.compressionFlags = leadingNumber<std::uint32_t>(value);
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
            header.transformRounds = leadingNumber<std::uint64_t>(value);
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
            header.innerRandomStreamID = leadingNumber<std::uint32_t>(value);
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

KdfSettings argon2Settings(const UUID& id, const VariantDictionary& parameters) {
    const auto number = [&](std::string_view key) {
        const auto* value = parameters[key];
        return value ? value->asUInt64() : std::nullopt;
    };
    const auto* lanes = parameters["P"];
    const auto memoryKiB = std::max(number("M").value_or(defaultMemory), leastMemory) / 1024;
    const auto iterations = number("I").value_or(defaultIterations);
    const auto parallelism = lanes ? lanes->asUInt32().value_or(defaultParallelism) : defaultParallelism;
    if (id == KdbxUUIDs::kdfArgon2d())
        return {KdfSettings::Argon2d{memoryKiB, iterations, parallelism}};
    return {KdfSettings::Argon2id{memoryKiB, iterations, parallelism}};
}

template <class Argon2Settings>
VariantDictionary argon2Parameters(const UUID& id, const Argon2Settings& settings, ByteView salt) {
    // The model's memory comes from a file's bytes divided by 1024, or from our own constants.
    precondition(settings.memoryKiB <= std::numeric_limits<std::uint64_t>::max() / 1024);
    VariantDictionary parameters;
    parameters.set("$UUID", VariantValue{copyOf(id.kdbxBytes())});
    parameters.set("S", VariantValue{copyOf(salt)});
    parameters.set("P", VariantValue{settings.parallelism});
    parameters.set("M", VariantValue{settings.memoryKiB * 1024});
    parameters.set("I", VariantValue{settings.iterations});
    parameters.set("V", VariantValue{Argon2::currentVersion});
    return parameters;
}

VariantDictionary aesParameters(const KdfSettings::AesKdf& settings, ByteView salt) {
    VariantDictionary parameters;
    parameters.set("$UUID", VariantValue{copyOf(KdbxUUIDs::kdfAes().kdbxBytes())});
    parameters.set("R", VariantValue{settings.rounds});
    parameters.set("S", VariantValue{copyOf(salt)});
    return parameters;
}

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
        writer.number(FieldID::transformRounds, transformRounds.value_or(defaultTransformRounds));
        writer.field(FieldID::encryptionIV, encryptionIV);
        writer.orEmpty(FieldID::innerRandomStreamKey, innerRandomStreamKey);
        writer.orEmpty(FieldID::streamStartBytes, streamStartBytes);
        writer.number(FieldID::innerRandomStreamID, innerRandomStreamID.value_or(2));
    } else {
        writer.field(FieldID::encryptionIV, encryptionIV);
        if (kdfParameters)
            writer.field(FieldID::kdfParameters, kdfParameters->serialize());
        if (publicCustomData && !publicCustomData->isEmpty())
            writer.field(FieldID::publicCustomData, publicCustomData->serialize());
    }
    writer.field(FieldID::endOfHeader, endMark);
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

UUID KdbxHeader::kdfUUID() const {
    const auto* value = kdfParameters ? (*kdfParameters)["$UUID"] : nullptr;
    const auto bytes = value ? value->asData() : std::nullopt;
    const auto id = bytes ? UUID::fromKdbxBytes(*bytes) : std::nullopt;
    if (!id)
        throw KdbxError::unsupportedKdf("KdfParameters içinde $UUID yok");
    return *id;
}

KdfSettings KdbxHeader::kdfSettings() const {
    if (!isKdbx4())
        return {KdfSettings::AesKdf{transformRounds.value_or(defaultTransformRounds)}};
    const auto id = kdfUUID();
    if (id == KdbxUUIDs::kdfAes()) {
        const auto* rounds = (*kdfParameters)["R"];
        return {
            KdfSettings::AesKdf{rounds ? rounds->asUInt64().value_or(defaultTransformRounds) : defaultTransformRounds}};
    }
    if (id == KdbxUUIDs::kdfArgon2d() || id == KdbxUUIDs::kdfArgon2id())
        return argon2Settings(id, *kdfParameters);
    throw KdbxError::unsupportedKdf(id.text());
}

VariantDictionary KdbxHeader::kdfParametersFor(const KdfSettings& settings, ByteView salt) {
    return std::visit(
        Overloaded{
            [&](const KdfSettings::Argon2d& argon2) { return argon2Parameters(KdbxUUIDs::kdfArgon2d(), argon2, salt); },
            [&](const KdfSettings::Argon2id& argon2) {
                return argon2Parameters(KdbxUUIDs::kdfArgon2id(), argon2, salt);
            },
            [&](const KdfSettings::AesKdf& aes) { return aesParameters(aes, salt); },
        },
        settings.settings);
}
