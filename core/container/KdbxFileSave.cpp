// SPDX-License-Identifier: MIT
#include "core/container/KdbxCrypto.h"
#include "core/container/KdbxFileSteps.h"
#include "core/container/KdbxInnerHeader.h"
#include "core/container/KdbxKeys.h"
#include "core/document/KdbxXMLWriter.h"
#include "core/model/KdbxError.h"
#include "core/primitives/Gzip.h"
#include "core/primitives/Sha2.h"

namespace KdbxFile {
namespace {

constexpr std::size_t seedSize = 32;            // of the master seed, whose size is fixed, and of the salt alike
constexpr std::size_t innerStreamKeySize = 64;  // as much as the digest that the key is hashed to

/// A version that we write stays; everything else becomes the newest.
KdbxFormatVersion writtenVersion(const KdbxFormatVersion& version) {
    return version.major == 4 && version.minor <= 1 ? version : KdbxFormatVersion{.major = 4, .minor = 1};
}

/// Inner header and document. The inner stream is new with each save, and always ChaCha20.
Bytes payloadOf(const KdbxDatabase& database, std::uint16_t major) {
    const KdbxInnerHeader innerHeader{.streamID = static_cast<std::uint32_t>(KdbxCrypto::InnerStreamID::chaCha20),
                                      .streamKey = KdbxCrypto::randomBytes(innerStreamKeySize),
                                      .binaries = KdbxXML::preservedBinaries(database.root)};
    const auto stream = KdbxCrypto::makeInnerStream(KdbxCrypto::InnerStreamID::chaCha20, innerHeader.streamKey);
    KdbxXML::Writer writer(*stream, major);
    writer.writeDocument(database, std::nullopt);

    auto payload = innerHeader.serialize();
    append(payload, writer.out());
    return payload;
}

}  // namespace

KdbxHeader freshHeader(const KdbxDatabase& database) {
    const auto version = writtenVersion(database.formatVersion);
    KdbxHeader header;
    header.major = version.major;
    header.minor = version.minor;
    header.cipherUUID = database.cipher == KdbxCipher::aes256 ? KdbxUUIDs::aes256() : KdbxUUIDs::chacha20();
    header.compressionFlags = database.compressed ? 1 : 0;
    header.masterSeed = KdbxCrypto::randomBytes(seedSize);
    header.encryptionIV = KdbxCrypto::randomBytes(KdbxCrypto::ivSize(database.cipher));
    header.kdfParameters = KdbxHeader::kdfParametersFor(database.kdf, KdbxCrypto::randomBytes(seedSize));
    header.rawData = header.serialize();
    return header;
}

Bytes saveBehind(const KdbxHeader& header, const KdbxDatabase& database, const KdbxKey& key,
                 const KdbxKeys::Transformation& transformation) {
    return saveBehind(header, database, KdbxKeys::derive(KdbxKeys::compositeKey(key), header, transformation));
}

Bytes saveBehind(const KdbxHeader& header, const KdbxDatabase& database, const KdbxKeys::DerivedKeys& keys) {
    if (!keys.hmac)
        throw KdbxError::cryptoFailure("HMAC anahtarı türetilemedi");

    auto payload = payloadOf(database, header.major);
    if (header.compressed())
        payload = Gzip::compress(payload);
    payload =
        KdbxCrypto::encryptPayload(payload, {.cipher = header.cipher(), .key = keys.master, .iv = header.encryptionIV});

    Bytes file = header.rawData;
    append(file, Sha2::sha256(header.rawData));
    append(file, KdbxCrypto::headerHMAC(header.rawData, {.key = *keys.hmac}));
    append(file, KdbxCrypto::writeHMACBlocks(payload, {.key = *keys.hmac}, KdbxCrypto::defaultBlockSize));
    return file;
}

}  // namespace KdbxFile
