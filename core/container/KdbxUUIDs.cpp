// SPDX-License-Identifier: MIT
#include "core/container/KdbxUUIDs.h"

#include "core/primitives/Precondition.h"

#include <string_view>

namespace KdbxUUIDs {
namespace {

UUID fromConstant(std::string_view text) {
    const auto id = UUID::fromText(text);
    precondition(id);  // only the constants below come here
    return *id;
}

}  // namespace

// The ciphers' (FIPS 197, RFC 8439). Random numbers, as all identifiers that the format publishes.

const UUID& aes256() {
    static const UUID id = fromConstant("31C1F2E6-BF71-4350-BE58-05216AFC5AFF");
    return id;
}

const UUID& chacha20() {
    static const UUID id = fromConstant("D6038A2B-8B6F-4CB5-A524-339A31DBB59A");
    return id;
}

const UUID& twofish() {
    static const UUID id = fromConstant("AD68F29F-576F-4BB9-A36A-D47AF965346C");
    return id;
}

// The key derivations'. That of AES had no identifier before KDBX 4; the variants of Argon2 (RFC 9106) have one each.

const UUID& kdfAes() {
    static const UUID id = fromConstant("C9D9F39A-628A-4460-BF74-0D08C18A4FEA");
    return id;
}

const UUID& kdfAesKdbx3() {
    return kdfAes();
}

const UUID& kdfArgon2d() {
    static const UUID id = fromConstant("EF636DDF-8C29-444B-91F7-A9A403E30A0C");
    return id;
}

const UUID& kdfArgon2id() {
    static const UUID id = fromConstant("9E298B19-56DB-4773-B23D-FC3EC6F0A1E6");
    return id;
}

}  // namespace KdbxUUIDs
