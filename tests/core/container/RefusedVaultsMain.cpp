// SPDX-License-Identifier: MIT
// Writes the vaults of tests/data/vaults/refused: `refused-vaults FOLDER`. Each is a small vault with one fault, and
// its name begins with the failure that is right for it.
#include "core/model/KdbxError.h"
#include "tests/core/container/VaultBuilder.h"

#include <filesystem>
#include <fstream>
#include <map>

namespace {

using FieldID = KdbxHeader::FieldID;

constexpr std::size_t hashesSize = 64;     // the header's hash and its HMAC
constexpr std::size_t blockHeadSize = 36;  // an HMAC and a size

using Vaults = std::map<std::string, Bytes>;

template <class Change>
Bytes changed(VaultBuilder builder, Change change) {
    change(builder);
    return builder.build();
}

template <class Change>
Bytes kdbx4With(Change change) {
    return changed(VaultBuilder::kdbx4(), change);
}

template <class Change>
Bytes kdbx3With(Change change) {
    return changed(VaultBuilder::kdbx3(), change);
}

/// A sound vault of KDBX 4 with the byte at `offset` behind its header changed.
Bytes flippedBehindHeader(std::size_t offset) {
    const auto builder = VaultBuilder::kdbx4();
    auto file = builder.build();
    file[builder.header().size() + offset] ^= 1;
    return file;
}

Bytes cutBy(Bytes file, std::size_t bytes) {
    file.resize(file.size() - bytes);
    return file;
}

void addFaultsOfTheHeader(Vaults& vaults) {
    auto noSignature = VaultBuilder::kdbx4().build();
    noSignature[0] ^= 1;
    vaults["KdbxError.notAKdbxFile-first-signature"] = noSignature;
    vaults["KdbxError.unsupportedVersion-4.2"] = kdbx4With([](auto& vault) { vault.version.minor = 2; });
    vaults["KdbxError.corruptedData-master-seed-of-31-bytes"] =
        kdbx4With([](auto& vault) { vault.set(FieldID::masterSeed, Bytes(31, 1)); });
    vaults["KdbxError.corruptedData-no-kdf-parameters"] =
        kdbx4With([](auto& vault) { vault.remove(FieldID::kdfParameters); });
    vaults["KdbxError.corruptedData-kdbx3-no-start-bytes"] =
        kdbx3With([](auto& vault) { vault.remove(FieldID::streamStartBytes); });
    vaults["KdbxError.headerHashMismatch-stored-hash"] = flippedBehindHeader(0);
    vaults["KdbxError.unsupportedKdf-unknown-identifier"] =
        kdbx4With([](auto& vault) { vault.setParameter("$UUID", VariantValue{Bytes(16, 0xAB)}); });
    vaults["KdbxError.unsupportedKdf-argon2-without-lanes"] = kdbx4With([](auto& vault) {
        vault.setKdf({KdfSettings::Argon2{
            .variant = KdfSettings::Variant::argon2id, .memoryKiB = 8, .iterations = 1, .parallelism = 0}});
    });
    vaults["KdbxError.cryptoFailure-seed-of-31-bytes"] =
        kdbx4With([](auto& vault) { vault.setParameter("S", VariantValue{Bytes(31, 1)}); });
    vaults["Argon2.Error.invalidMemory-less-than-eight-blocks"] = kdbx4With([](auto& vault) {
        vault.setKdf({KdfSettings::Argon2{
            .variant = KdfSettings::Variant::argon2d, .memoryKiB = 7, .iterations = 1, .parallelism = 1}});
    });
}

void addFaultsOfThePayload(Vaults& vaults) {
    vaults["KdbxError.invalidCredentials-stored-hmac"] = flippedBehindHeader(hashesSize / 2);
    vaults["KdbxError.blockHmacMismatch-first-block"] = flippedBehindHeader(hashesSize + blockHeadSize);
    vaults["KdbxError.corruptedData-no-terminator"] = cutBy(VaultBuilder::kdbx4().build(), blockHeadSize);
    vaults["KdbxError.unsupportedCipher-twofish"] =
        kdbx4With([](auto& vault) { vault.set(FieldID::cipherID, KdbxUUIDs::twofish().kdbxBytes()); });
    vaults["KdbxError.corruptedData-iv-of-15-bytes"] =
        kdbx4With([](auto& vault) { vault.set(FieldID::encryptionIV, Bytes(15, 1)); });
    vaults["AESCipher.Error.cryptoFailure-half-a-block"] =
        kdbx4With([](auto& vault) { vault.ciphertext = Bytes(24, 1); });
    vaults["Gzip.Error.notGzip-text"] =
        kdbx4With([](auto& vault) { vault.compressed = copyOf(bytesOf("this is no gzip member")); });
    vaults["KdbxError.unsupportedCipher-inner-stream-7"] =
        kdbx4With([](auto& vault) { vault.innerHeader.streamID = 7; });
    vaults["KdbxError.xmlParseFailure-no-root"] =
        kdbx4With([](auto& vault) { vault.document = "<KeePassFile><Meta/></KeePassFile>"; });
    vaults["KdbxError.invalidCredentials-kdbx3-start-bytes"] =
        kdbx3With([](auto& vault) { vault.plaintext = Bytes(64, 1); });
    vaults["KdbxError.headerHashMismatch-kdbx3-in-the-document"] = kdbx3With([](auto& vault) {
        vault.document = "<KeePassFile><Meta><HeaderHash>AAAA</HeaderHash></Meta><Root><Group/></Root></KeePassFile>";
    });
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2)
        return 1;
    Vaults vaults;
    addFaultsOfTheHeader(vaults);
    addFaultsOfThePayload(vaults);
    for (const auto& [name, file] : vaults)
        std::ofstream(std::filesystem::path(argv[1]) / (name + ".kdbx"), std::ios::binary) << textOf(file);
    return 0;
}
