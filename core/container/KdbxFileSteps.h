// SPDX-License-Identifier: MIT
#pragma once

#include "core/container/KdbxKeys.h"
#include "core/model/KdbxDatabase.h"

/// The steps of `load` and `save`, for these two and for tests that take them with a header of their own.
namespace KdbxFile {

/// Reads what follows the header of a KDBX 4 file, in an order in which a damaged header, wrong credentials and a
/// damaged payload show as what they are.
[[nodiscard]] KdbxDatabase loadKdbx4(ByteView file, const KdbxHeader& header, const KdbxKey& key,
                                     const KdbxKeys::Transformation& transformation = KdbxKeys::transform);

/// The same for KDBX 3, where a damaged header or ciphertext shows as wrong credentials.
[[nodiscard]] KdbxDatabase loadKdbx3(ByteView file, const KdbxHeader& header, const KdbxKey& key,
                                     const KdbxKeys::Transformation& transformation = KdbxKeys::transform);

/// A header for `database` with fresh seed, IV and salt.
[[nodiscard]] KdbxHeader freshHeader(const KdbxDatabase& database);

/// The file of `database` behind that header.
[[nodiscard]] Bytes saveBehind(const KdbxHeader& header, const KdbxDatabase& database, const KdbxKey& key,
                               const KdbxKeys::Transformation& transformation = KdbxKeys::transform);

/// The same with the header's keys.
[[nodiscard]] Bytes saveBehind(const KdbxHeader& header, const KdbxDatabase& database,
                               const KdbxKeys::DerivedKeys& keys);

}  // namespace KdbxFile
