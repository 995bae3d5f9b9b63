// SPDX-License-Identifier: MIT
#pragma once

#include "core/container/KdbxHeader.h"
#include "core/container/KdbxKeyDerivation.h"
#include "core/model/KdbxDatabase.h"
#include "core/primitives/Bytes.h"
#include "core/primitives/Derivation.h"
#include "core/primitives/Hexadecimal.h"

#include <cstdint>
#include <functional>
#include <optional>

/// From the user's credentials to the keys that open a vault. A wrong password looks like a right one here.
namespace KdbxKeys {

/// How a key file was read.
enum class KeyFileKind : std::uint8_t { xmlV1, xmlV2, rawBinary32, hex64, hashed };

struct KeyFileResult {
    Bytes key;
    KeyFileKind kind;
    bool operator==(const KeyFileResult&) const = default;
};

struct DerivedKeys {
    Bytes master;               // 32 bytes: the key of the payload's cipher
    std::optional<Bytes> hmac;  // 64 bytes: the base of the HMAC keys, for KDBX 4 alone
    Bytes transformed;          // 32 bytes: what the key derivation gave
};

/// The 32 bytes to which the credentials are hashed. An empty password is one, and differs from none.
///
/// @throws KdbxError invalidCredentials where there is neither password nor key file; what `keyFileKey` throws.
[[nodiscard]] Bytes compositeKey(const KdbxKey& key);

/// The key in a key file's content. Any file is one: what has no form of its own is hashed.
///
/// @throws KdbxError corruptedData for an XML key file whose key is unusable.
[[nodiscard]] KeyFileResult keyFileKey(ByteView data);

/// Runs the key derivation that `header` asks for, for as long as it takes; 32 bytes.
///
/// @throws KdbxError, AESCipher::Error or Argon2::Error.
[[nodiscard]] Bytes transform(ByteView compositeKey, const KdbxHeader& header);

/// The same, reported to `derivation`, where it can be given up.
///
/// @throws DerivationGivenUp and what `transform` throws.
[[nodiscard]] Bytes transformWatched(ByteView compositeKey, const KdbxHeader& header, Derivation* derivation);

/// What runs the slow step: `transform` itself, or a function that runs it elsewhere, watches it or already knows its
/// outcome.
using Transformation = std::function<Bytes(ByteView compositeKey, const KdbxHeader& header)>;

using KdbxKeyDerivation::aesKdf;

/// All keys of a file with this header. Fails as the transformation does.
[[nodiscard]] DerivedKeys derive(ByteView compositeKey, const KdbxHeader& header,
                                 const Transformation& transformation = transform);

using ::hexDecode;

}  // namespace KdbxKeys
