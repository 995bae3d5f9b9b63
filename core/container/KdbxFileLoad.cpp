// SPDX-License-Identifier: MIT
#include "core/container/KdbxCrypto.h"
#include "core/container/KdbxFileSteps.h"
#include "core/container/KdbxGate.h"
#include "core/container/KdbxInnerHeader.h"
#include "core/container/KdbxKeys.h"
#include "core/document/KdbxXML.h"
#include "core/model/KdbxError.h"
#include "core/primitives/AESCipher.h"
#include "core/primitives/Gzip.h"
#include "core/primitives/Sha2.h"

namespace KdbxFile {
namespace {

using KdbxCrypto::InnerStreamID;

ByteView rest(const KdbxReader& reader, ByteView data) {
    return data.subspan(static_cast<std::size_t>(reader.offset()));
}

Bytes decompressedIf(bool compressed, Bytes data) {
    return compressed ? Gzip::decompress(data) : data;
}

KdbxFormatVersion formatVersion(const KdbxHeader& header) {
    return {.major = header.major, .minor = header.minor};
}

/// The document of a KDBX 4 payload, which its inner header opens.
KdbxXML::Document parsePayload(ByteView payload, const KdbxHeader& header) {
    KdbxReader reader(payload);
    const auto innerHeader = KdbxInnerHeader::parse(reader);
    const auto id = KdbxCrypto::innerStreamID(innerHeader.streamID);
    if (!id)
        throw KdbxError::unsupportedCipher("inner stream " + std::to_string(innerHeader.streamID));
    const auto stream = KdbxCrypto::makeInnerStream(*id, innerHeader.streamKey);
    return KdbxXML::parse(rest(reader, payload), *stream, formatVersion(header), innerHeader.binaries);
}

/// The deciphered rest of a KDBX 3 file. Every failure is reported as wrong credentials: in CBC a wrong key shows
/// as bad padding, and nothing authenticates the IV.
Bytes decryptKdbx3(ByteView ciphertext, const KdbxCrypto::PayloadCipher& by) {
    try {
        return KdbxCrypto::decryptPayload(ciphertext, by);
    } catch (const KdbxError&) {
        throw KdbxError::invalidCredentials();
    } catch (const AESCipher::Error&) {
        throw KdbxError::invalidCredentials();
    }
}

/// What follows the start bytes, which show a wrong password that padding has let through.
ByteView behindStartBytes(ByteView plaintext, ByteView startBytes) {
    if (plaintext.size() < startBytes.size() || !KdbxGate::isAuthentic(plaintext.first(startBytes.size()), startBytes))
        throw KdbxError::invalidCredentials();
    return plaintext.subspan(startBytes.size());
}

/// The stream of a KDBX 3 document; an unknown one is taken for Salsa20.
std::unique_ptr<InnerStreamCipher> innerStreamKdbx3(const KdbxHeader& header) {
    const auto id = header.innerRandomStreamID
                        ? KdbxCrypto::innerStreamID(*header.innerRandomStreamID).value_or(InnerStreamID::salsa20)
                        : InnerStreamID::salsa20;
    return KdbxCrypto::makeInnerStream(id, header.innerRandomStreamKey.value_or(Bytes()));
}

KdbxDatabase vaultOf(KdbxXML::Document document, const KdbxHeader& header) {
    return {.meta = std::move(document.meta),
            .root = std::move(document.root),
            .cipher = header.cipher(),
            .kdf = header.kdfSettings(),
            .compressed = header.compressed(),
            .formatVersion = formatVersion(header)};
}

}  // namespace

KdbxDatabase loadKdbx4(ByteView file, const KdbxHeader& header, const KdbxKey& key,
                       const KdbxKeys::Transformation& transformation) {
    KdbxReader reader(file);
    (void)reader.read(header.endOffset);
    const auto storedHash = reader.read(Sha2::sha256Size);
    const auto storedHMAC = reader.read(Sha2::sha256Size);
    // A damaged header is reported at once, before the slow step.
    if (!KdbxGate::isAuthentic(Sha2::sha256(header.rawData), storedHash))
        throw KdbxError::headerHashMismatch();

    const auto keys = KdbxKeys::derive(KdbxKeys::compositeKey(key), header, transformation);
    if (!keys.hmac)
        throw KdbxError::cryptoFailure("KDBX 4 için HMAC anahtarı türetilemedi");
    // The one moment at which a wrong password shows: what fails from here on is damage.
    if (!KdbxGate::isAuthentic(KdbxCrypto::headerHMAC(header.rawData, {.key = *keys.hmac}), storedHMAC))
        throw KdbxError::invalidCredentials();

    auto payload = KdbxCrypto::readHMACBlocks(reader, {.key = *keys.hmac});
    payload =
        KdbxCrypto::decryptPayload(payload, {.cipher = header.cipher(), .key = keys.master, .iv = header.encryptionIV});
    payload = decompressedIf(header.compressed(), std::move(payload));
    return vaultOf(parsePayload(payload, header), header);
}

KdbxDatabase loadKdbx3(ByteView file, const KdbxHeader& header, const KdbxKey& key,
                       const KdbxKeys::Transformation& transformation) {
    if (!header.streamStartBytes)
        throw KdbxError::corruptedData("KDBX 3 başlığında StreamStartBytes yok");
    const auto keys = KdbxKeys::derive(KdbxKeys::compositeKey(key), header, transformation);
    const auto ciphertext = file.subspan(static_cast<std::size_t>(header.endOffset));
    auto payload = decryptKdbx3(ciphertext, {.cipher = header.cipher(), .key = keys.master, .iv = header.encryptionIV});
    KdbxReader blocks(behindStartBytes(payload, *header.streamStartBytes));
    payload = KdbxCrypto::readHashedBlocks(blocks);
    payload = decompressedIf(header.compressed(), std::move(payload));

    const auto stream = innerStreamKdbx3(header);
    auto document = KdbxXML::parse(payload, *stream, formatVersion(header), {});
    if (document.headerHash && !KdbxGate::isAuthentic(Sha2::sha256(header.rawData), *document.headerHash))
        throw KdbxError::headerHashMismatch();
    return vaultOf(std::move(document), header);
}

}  // namespace KdbxFile
