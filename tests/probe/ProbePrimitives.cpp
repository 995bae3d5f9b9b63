// SPDX-License-Identifier: MIT
#include "core/container/KdbxKeys.h"
#include "core/container/VariantDictionary.h"
#include "core/primitives/AESCipher.h"
#include "core/primitives/Argon2.h"
#include "core/primitives/Blake2b.h"
#include "core/primitives/ChaCha20Stream.h"
#include "core/primitives/Gzip.h"
#include "core/primitives/Salsa20Stream.h"
#include "tests/probe/Probe.h"
#include "tests/support/Hex.h"
#include "tests/support/VaultJSON.h"

#include <limits>

namespace Probe {
namespace {

constexpr std::uint64_t most32 = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint64_t most64 = std::numeric_limits<std::uint64_t>::max();

std::int64_t length(const Json& request, std::uint64_t least, std::uint64_t most) {
    return static_cast<std::int64_t>(number(request, "outputLength", least, most));
}

Argon2::Variant variantOf(const std::string& name) {
    if (name == "d")
        return Argon2::Variant::d;
    if (name == "i")
        return Argon2::Variant::i;
    require(name == "id", "variant: neither d nor i nor id");
    return Argon2::Variant::id;
}

/// Any length may be asked for: Argon2 has a failure for those that it refuses.
std::int64_t argon2Length(const Json& request) {
    const auto& value = argument(request, "outputLength");
    require(value.is_number_integer(), "outputLength: not a whole number");
    require(!value.is_number_unsigned() || value.get<std::uint64_t>() <= most64 / 2, "outputLength: out of range");
    return value.get<std::int64_t>();
}

Json argon2(const Json& request) {
    const auto password = bytes(request, "password");
    const auto salt = bytes(request, "salt");
    const auto secret = bytes(request, "secret");
    const auto associatedData = bytes(request, "associatedData");
    return toHex(Argon2::hash({.password = password, .salt = salt, .secret = secret, .associatedData = associatedData},
                              {.memoryKiB = number32(request, "memoryKiB"),
                               .iterations = number32(request, "iterations"),
                               .parallelism = number32(request, "parallelism")},
                              argon2Length(request), variantOf(text(request, "variant")),
                              number32(request, "version")));
}

Json blake2b(const Json& request) {
    const auto key = bytes(request, "key");
    require(key.size() <= 64, "key: more than 64 bytes");
    return toHex(Blake2b::hash(bytes(request, "data"), length(request, 1, 64), key));
}

Json longHash(const Json& request) {
    return toHex(Blake2b::longHash(bytes(request, "data"), length(request, 1, most32)));
}

/// One call a chunk, all on the one stream.
Json processed(InnerStreamCipher& stream, const Json& request) {
    const auto& chunks = argument(request, "chunks");
    require(chunks.is_array(), "chunks: not an array");
    auto results = Json::array();
    for (const auto& chunk : chunks)
        results.push_back(toHex(stream.process(bytesOfText(chunk, "chunks"))));
    return results;
}

Json chacha20(const Json& request) {
    const auto key = bytes(request, "key");
    const auto nonce = bytes(request, "nonce");
    require(key.size() == 32, "key: not 32 bytes");
    require(nonce.size() == 12 || nonce.size() == 8, "nonce: neither 12 nor 8 bytes");
    ChaCha20Stream stream({.key = key, .nonce = nonce}, number32(request, "counter"));
    return processed(stream, request);
}

Json salsa20(const Json& request) {
    const auto key = bytes(request, "key");
    const auto nonce = bytes(request, "nonce");
    require(key.size() == 32 || key.size() == 16, "key: neither 32 nor 16 bytes");
    require(nonce.size() == 8, "nonce: not 8 bytes");
    Salsa20Stream stream({.key = key, .nonce = nonce});
    return processed(stream, request);
}

Json aes(const Json& request) {
    const auto mode = text(request, "mode");
    const auto data = bytes(request, "data");
    const auto key = bytes(request, "key");
    if (mode == "ecbEncrypt")
        return toHex(AESCipher::ecbEncryptNoPadding(data, {.key = key}));
    if (mode == "ecbDecrypt")
        return toHex(AESCipher::ecbDecryptNoPadding(data, {.key = key}));
    const auto iv = bytes(request, "iv");
    if (mode == "cbcEncrypt")
        return toHex(AESCipher::cbcEncrypt(data, {.key = key, .iv = iv}));
    require(mode == "cbcDecrypt", "mode: unknown");
    return toHex(AESCipher::cbcDecrypt(data, {.key = key, .iv = iv}));
}

Json aesKdf(const Json& request) {
    return toHex(KdbxKeys::aesKdf(bytes(request, "input"),
                                  {.seed = bytes(request, "seed"), .rounds = number(request, "rounds", 0, most64)}));
}

Json gzip(const Json& request) {
    const auto mode = text(request, "mode");
    const auto data = bytes(request, "data");
    if (mode == "compress")
        return toHex(Gzip::compress(data));
    require(mode == "decompress", "mode: unknown");
    return toHex(Gzip::decompress(data));
}

Json variantDictionary(const Json& request) {
    const auto dictionary = VariantDictionary::parse(bytes(request, "data"));
    return {{"items", VaultJSON::of(dictionary)}, {"serialized", toHex(dictionary.serialize())}};
}

}  // namespace

void addPrimitives(Operations& operations) {
    operations["argon2"] = argon2;
    operations["blake2b"] = blake2b;
    operations["longHash"] = longHash;
    operations["chacha20"] = chacha20;
    operations["salsa20"] = salsa20;
    operations["aes"] = aes;
    operations["aesKdf"] = aesKdf;
    operations["gzip"] = gzip;
    operations["variantDictionary"] = variantDictionary;
}

}  // namespace Probe
