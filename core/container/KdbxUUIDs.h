// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/UUID.h"

/// The identifiers by which a vault file names its ciphers and key derivation functions, as the format publishes them.
/// Each is built on its first use.
namespace KdbxUUIDs {

[[nodiscard]] const UUID& aes256();
[[nodiscard]] const UUID& chacha20();
[[nodiscard]] const UUID& twofish();  // known by name alone, for a refusal that the user understands
[[nodiscard]] const UUID& kdfAes();
[[nodiscard]] const UUID& kdfAesKdbx3();  // another name of kdfAes
[[nodiscard]] const UUID& kdfArgon2d();
[[nodiscard]] const UUID& kdfArgon2id();

}  // namespace KdbxUUIDs
