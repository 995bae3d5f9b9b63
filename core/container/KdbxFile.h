// SPDX-License-Identifier: MIT
#pragma once

#include "core/container/KdbxKeys.h"
#include "core/model/KdbxDatabase.h"

/// A vault file as a whole: the two doors of the vault code.
namespace KdbxFile {

/// Reads a vault of KDBX 3 or 4. The transformation runs once, on the calling thread, and its failure passes through.
///
/// @throws KdbxError, AESCipher::Error, Argon2::Error or Gzip::Error. Nothing stays behind.
[[nodiscard]] KdbxDatabase load(ByteView file, const KdbxKey& key,
                                const KdbxKeys::Transformation& transformation = KdbxKeys::transform);

/// The bytes of a vault file, always KDBX 4, with fresh seeds, salt, IV and inner key. `database` is left as it is.
///
/// @throws KdbxError, AESCipher::Error, Argon2::Error or Gzip::Error.
[[nodiscard]] Bytes save(const KdbxDatabase& database, const KdbxKey& key,
                         const KdbxKeys::Transformation& transformation = KdbxKeys::transform);

}  // namespace KdbxFile
