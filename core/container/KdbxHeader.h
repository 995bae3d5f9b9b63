// SPDX-License-Identifier: MIT
#pragma once

#include "core/container/KdbxUUIDs.h"
#include "core/container/VariantDictionary.h"
#include "core/model/KdbxDatabase.h"
#include "core/model/UUID.h"

#include <cstdint>
#include <optional>

/// The outer header of a vault file: the preamble and its run of fields.
struct KdbxHeader {
    // By these two words the format knows its files; the second distinguishes it from its forerunner.
    static constexpr std::uint32_t signature1 = 0x9AA2D903;
    static constexpr std::uint32_t signature2 = 0xB54BFB67;

    /// As the format numbers them. KDBX 4 has put 5, 6 and 8 to 10 elsewhere.
    enum class FieldID : std::uint8_t {
        endOfHeader = 0,           // any bytes; ours are 0D 0A 0D 0A
        comment = 1,               // any bytes
        cipherID = 2,              // 16 bytes
        compressionFlags = 3,      // 32 bits
        masterSeed = 4,            // 32 bytes
        transformSeed = 5,         // KDBX 3, any bytes
        transformRounds = 6,       // KDBX 3, 64 bits
        encryptionIV = 7,          // any bytes
        innerRandomStreamKey = 8,  // KDBX 3, any bytes
        streamStartBytes = 9,      // KDBX 3, any bytes
        innerRandomStreamID = 10,  // KDBX 3, 32 bits
        kdfParameters = 11,        // KDBX 4, a dictionary
        publicCustomData = 12      // KDBX 4, a dictionary
    };

    std::uint16_t major = 4;
    std::uint16_t minor = 1;
    UUID cipherUUID = KdbxUUIDs::aes256();
    std::uint32_t compressionFlags = 1;  // 0: none, 1: gzip
    Bytes masterSeed;                    // 32 bytes once parsed
    Bytes encryptionIV;                  // of any length until the payload is deciphered
    std::optional<VariantDictionary> kdfParameters;
    std::optional<VariantDictionary> publicCustomData;
    std::optional<Bytes> transformSeed;
    std::optional<std::uint64_t> transformRounds;
    std::optional<Bytes> streamStartBytes;
    std::optional<Bytes> innerRandomStreamKey;
    std::optional<std::uint32_t> innerRandomStreamID;
    std::optional<Bytes> comment;
    Bytes rawData;               // the file's own bytes, up to endOffset
    std::int64_t endOffset = 0;  // of the first byte behind the end field

    /// The header at the start of a file. Unknown fields are skipped; of a repeated field the last one counts.
    ///
    /// @throws KdbxError notAKdbxFile, unsupportedVersion or corruptedData.
    [[nodiscard]] static KdbxHeader parse(ByteView data);

    /// The bytes of the header, which `rawData` does not follow. A KDBX 3 field of more than 65535 bytes is a
    /// precondition.
    [[nodiscard]] Bytes serialize() const;

    [[nodiscard]] bool isKdbx4() const noexcept { return major > 3; }
    [[nodiscard]] bool compressed() const noexcept { return compressionFlags == 1; }

    /// @throws KdbxError unsupportedCipher.
    [[nodiscard]] KdbxCipher cipher() const;

    /// The key derivation as the model keeps it, without the salt.
    ///
    /// @throws KdbxError unsupportedKdf.
    [[nodiscard]] KdfSettings kdfSettings() const;

    /// The parameters of the key derivation that the file asks for. Those of KDBX 3 take the form of KDBX 4, from which
    /// the same key is derived.
    ///
    /// @throws KdbxError corruptedData where a KDBX 3 header has no seed or no rounds.
    [[nodiscard]] VariantDictionary derivationParameters() const;

    /// The parameters that a KDBX 4 header carries for `settings`, in their order on disk.
    [[nodiscard]] static VariantDictionary kdfParametersFor(const KdfSettings& settings, ByteView salt);
};
