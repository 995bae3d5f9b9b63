// SPDX-License-Identifier: MIT
#include "core/container/KdbxKeys.h"

#include "core/container/KdbxGate.h"
#include "core/model/KdbxError.h"
#include "core/primitives/AESCipher.h"
#include "core/primitives/Argon2.h"
#include "core/primitives/Sha2.h"

#include <array>
#include <limits>

namespace KdbxKeys {
namespace {

constexpr std::size_t keySize = 32;
constexpr std::uint64_t leastMemory = 1024;  // bytes: one block of Argon2
constexpr unsigned memoryBits = 42;          // what is left is KiB in 32 bits
constexpr std::array<std::uint8_t, 1> hmacKeyMark{0x01};

/// The key derivation parameters of a header, each with its fallback.
class Parameters {
public:
    explicit Parameters(const VariantDictionary& dictionary) : m_dictionary(dictionary) {}

    [[nodiscard]] Bytes bytes(std::string_view key) const {
        const auto* value = m_dictionary[key];
        return value ? value->asData().value_or(Bytes()) : Bytes();
    }
    [[nodiscard]] std::uint64_t number64(std::string_view key, std::uint64_t fallback) const {
        const auto* value = m_dictionary[key];
        return value ? value->asUInt64().value_or(fallback) : fallback;
    }
    [[nodiscard]] std::uint32_t number32(std::string_view key, std::uint32_t fallback) const {
        const auto* value = m_dictionary[key];
        return value ? value->asUInt32().value_or(fallback) : fallback;
    }

private:
    const VariantDictionary& m_dictionary;
};

Argon2::Cost checkedCost(std::uint64_t memory, std::uint64_t iterations, std::uint32_t parallelism) {
    if (memory < leastMemory || iterations == 0 || parallelism == 0)
        throw KdbxError::unsupportedKdf("geçersiz Argon2 parametreleri");
    if (memory >> memoryBits != 0 || iterations > std::numeric_limits<std::uint32_t>::max())
        throw KdbxError::unsupportedKdf("Argon2 parametreleri aralık dışı");
    return {.memoryKiB = static_cast<std::uint32_t>(memory / 1024),
            .iterations = static_cast<std::uint32_t>(iterations),
            .parallelism = parallelism};
}

Bytes argon2(ByteView compositeKey, const Parameters& parameters, Argon2::Variant variant, Derivation* derivation) {
    const auto salt = parameters.bytes("S");
    const auto secret = parameters.bytes("K");
    const auto associatedData = parameters.bytes("A");
    const auto cost =
        checkedCost(parameters.number64("M", 67'108'864), parameters.number64("I", 2), parameters.number32("P", 2));
    return Argon2::hash({.password = compositeKey, .salt = salt, .secret = secret, .associatedData = associatedData},
                        KdbxGate::argon2Cost(cost), keySize, variant, parameters.number32("V", Argon2::currentVersion),
                        derivation);
}

Bytes transformKdbx3(ByteView compositeKey, const KdbxHeader& header, Derivation* derivation) {
    if (!header.transformSeed || !header.transformRounds)
        throw KdbxError::corruptedData("KDBX 3 dönüştürme parametreleri eksik");
    return aesKdf(compositeKey, *header.transformSeed, *header.transformRounds, derivation);
}

Bytes transformKdbx4(ByteView compositeKey, const KdbxHeader& header, Derivation* derivation) {
    const auto id = header.kdfUUID();
    const Parameters parameters(*header.kdfParameters);
    if (id == KdbxUUIDs::kdfAes())
        return aesKdf(compositeKey, parameters.bytes("S"), parameters.number64("R", KdbxHeader::defaultTransformRounds),
                      derivation);
    if (id == KdbxUUIDs::kdfArgon2d())
        return argon2(compositeKey, parameters, Argon2::Variant::d, derivation);
    if (id == KdbxUUIDs::kdfArgon2id())
        return argon2(compositeKey, parameters, Argon2::Variant::id, derivation);
    throw KdbxError::unsupportedKdf(id.text());
}

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
    return header.isKdbx4() ? transformKdbx4(compositeKey, header, derivation)
                            : transformKdbx3(compositeKey, header, derivation);
}

Bytes aesKdf(ByteView input, ByteView seed, std::uint64_t rounds, Derivation* derivation) {
    if (input.size() != keySize)
        throw KdbxError::cryptoFailure("AES-KDF girdisi 32 bayt olmalı");
    if (seed.size() != keySize)
        throw KdbxError::cryptoFailure("AES-KDF tohumu 32 bayt olmalı");
    return Sha2::sha256(AESCipher::ecbEncryptRepeatedly(input, seed, KdbxGate::aesRounds(rounds), derivation));
}

DerivedKeys derive(ByteView compositeKey, const KdbxHeader& header, const Transformation& transformation) {
    DerivedKeys keys;
    keys.transformed = transformation(compositeKey, header);
    keys.master = Sha2::sha256({header.masterSeed, keys.transformed});
    if (header.isKdbx4())
        keys.hmac = Sha2::sha512({header.masterSeed, keys.transformed, hmacKeyMark});
    return keys;
}

}  // namespace KdbxKeys
