// SPDX-License-Identifier: MIT
#include "core/container/KdbxKeys.h"

#include "core/model/KdbxError.h"
#include "core/primitives/Sha2.h"

#include <array>

namespace KdbxKeys {
namespace {

// Of one seed and one transformed key the format makes two keys: SHA-256 gives the cipher's, SHA-512 with this byte
// behind them the HMACs'.
constexpr std::array<std::uint8_t, 1> hmacKeySuffix{0x01};

}  // namespace

Bytes compositeKey(const KdbxKey& key) {
    Bytes credentials;
    if (key.password)
        append(credentials, Sha2::sha256(bytesOf(*key.password)));
    if (key.keyFileData)
        append(credentials, keyFileKey(*key.keyFileData).key);
    if (credentials.empty())
        throw KdbxError::invalidCredentials();
    return Sha2::sha256(credentials);
}

Bytes transform(ByteView compositeKey, const KdbxHeader& header) {
    return transformWatched(compositeKey, header, nullptr);
}

Bytes transformWatched(ByteView compositeKey, const KdbxHeader& header, Derivation* derivation) {
    return KdbxKeyDerivation::run(header.derivationParameters(), compositeKey, derivation);
}

DerivedKeys derive(ByteView compositeKey, const KdbxHeader& header, const Transformation& transformation) {
    DerivedKeys keys;
    keys.transformed = transformation(compositeKey, header);
    keys.master = Sha2::sha256({header.masterSeed, keys.transformed});
    if (header.isKdbx4())
        keys.hmac = Sha2::sha512({header.masterSeed, keys.transformed, hmacKeySuffix});
    return keys;
}

}  // namespace KdbxKeys
