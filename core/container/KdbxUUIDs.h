// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/UUID.h"

/// The identifiers by which a vault file names its ciphers and key derivation functions, as the format publishes them:
/// random numbers. Each is built on its first use.
namespace KdbxUUIDs {

// The ciphers' (FIPS 197, RFC 8439).

[[nodiscard]] inline const UUID& aes256() {
    static const UUID id = UUID::fromText("31C1F2E6-BF71-4350-BE58-05216AFC5AFF").value();
    return id;
}

[[nodiscard]] inline const UUID& chacha20() {
    static const UUID id = UUID::fromText("D6038A2B-8B6F-4CB5-A524-339A31DBB59A").value();
    return id;
}

/// Known by name alone, for a refusal that the user understands.
[[nodiscard]] inline const UUID& twofish() {
    static const UUID id = UUID::fromText("AD68F29F-576F-4BB9-A36A-D47AF965346C").value();
    return id;
}

// The key derivations'. That of AES had no identifier before KDBX 4; the variants of Argon2 (RFC 9106) have one each.

[[nodiscard]] inline const UUID& kdfAes() {
    static const UUID id = UUID::fromText("C9D9F39A-628A-4460-BF74-0D08C18A4FEA").value();
    return id;
}

[[nodiscard]] inline const UUID& kdfAesKdbx3() {
    return kdfAes();
}

[[nodiscard]] inline const UUID& kdfArgon2d() {
    static const UUID id = UUID::fromText("EF636DDF-8C29-444B-91F7-A9A403E30A0C").value();
    return id;
}

[[nodiscard]] inline const UUID& kdfArgon2id() {
    static const UUID id = UUID::fromText("9E298B19-56DB-4773-B23D-FC3EC6F0A1E6").value();
    return id;
}

}  // namespace KdbxUUIDs
