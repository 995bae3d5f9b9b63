// SPDX-License-Identifier: MIT
#pragma once

#include "core/container/KdbxKeys.h"

/// What a key derivation gave and the parameters that it ran under: enough to read and write files under the same
/// parameters without running it again. It opens what the credentials open, and is as secret as they are.
struct KdbxTransformedKey {
    VariantDictionary parameters;  // as a KDBX 4 header carries them, with the salt
    Bytes key;                     // 32 bytes

    /// `transformation`, which also leaves what it gave in `outcome`; that outlives it.
    [[nodiscard]] static KdbxKeys::Transformation remembering(KdbxKeys::Transformation transformation,
                                                              std::optional<KdbxTransformedKey>& outcome);

    /// Gives the known key for a header that has its parameters, and leaves all others to `otherwise`. The key outlives
    /// it.
    [[nodiscard]] KdbxKeys::Transformation orElse(KdbxKeys::Transformation otherwise) const;
};

namespace KdbxFile {

/// As `save`, but under a key that was derived before and its parameters: seed, IV and inner key alone are fresh.
///
/// @throws KdbxError, AESCipher::Error or Gzip::Error.
[[nodiscard]] Bytes saveUnder(const KdbxDatabase& database, const KdbxTransformedKey& key);

}  // namespace KdbxFile
