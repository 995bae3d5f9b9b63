// SPDX-License-Identifier: MIT
#include "core/primitives/AESCipher.h"

#include "core/primitives/AESOperation.h"
#include "core/primitives/AESRounds.h"
#include "core/primitives/Overloaded.h"

namespace AESCipher {
namespace {

constexpr std::size_t keySize = 32;
constexpr std::size_t blockSize = 16;

constexpr std::int32_t alignmentStatus = -4303;

Bytes run(AESOperation::Direction direction, ByteView data, const KeyMaterial& under) {
    AESOperation operation(direction, under);
    Bytes out(data.size() + blockSize);
    auto size = operation.update(out.data(), data);
    size += operation.finish(out.data() + size);
    out.resize(size);
    return out;
}

void checkKey(ByteView key) {
    if (key.size() != keySize)
        throw Error::invalidKeyLength(std::ssize(key));
}

Bytes cbc(AESOperation::Direction direction, ByteView data, const KeyMaterial& under) {
    checkKey(under.key);
    if (under.iv.size() != blockSize)
        throw Error::invalidIVLength(std::ssize(under.iv));
    if (direction == AESOperation::Direction::decrypt && data.size() % blockSize != 0)
        throw Error::cryptoFailure(alignmentStatus);
    return run(direction, data, under);
}

Bytes ecb(AESOperation::Direction direction, ByteView data, const KeyMaterial& under) {
    if (data.size() % blockSize != 0)
        throw Error::invalidBlockAlignment(std::ssize(data));
    checkKey(under.key);
    return run(direction, data, {.key = under.key});
}

}  // namespace

std::string ErrorCases::describe(const Case& failure) {
    return std::visit(
        Overloaded{
            [](const InvalidKeyLength& e) { return "AES: anahtar 32 byte olmalı (" + std::to_string(e.length) + ")."; },
            [](const InvalidIVLength& e) { return "AES: IV 16 byte olmalı (" + std::to_string(e.length) + ")."; },
            [](const InvalidBlockAlignment& e) {
                return "AES: veri 16'nın katı olmalı (" + std::to_string(e.length) + ").";
            },
            [](const CryptoFailure& e) { return "AES: CommonCrypto hatası " + std::to_string(e.status) + "."; },
        },
        failure);
}

Bytes cbcEncrypt(ByteView data, const KeyMaterial& under) {
    return cbc(AESOperation::Direction::encrypt, data, under);
}

Bytes cbcDecrypt(ByteView data, const KeyMaterial& under) {
    return cbc(AESOperation::Direction::decrypt, data, under);
}

Bytes ecbEncryptNoPadding(ByteView data, const KeyMaterial& under) {
    return ecb(AESOperation::Direction::encrypt, data, under);
}

Bytes ecbDecryptNoPadding(ByteView data, const KeyMaterial& under) {
    return ecb(AESOperation::Direction::decrypt, data, under);
}

Bytes ecbEncryptRepeatedly(ByteView block, const KeyMaterial& under, std::uint64_t rounds, Derivation* derivation) {
    return AESRounds::run(AESRounds::bestImplementation(), block, under, rounds, derivation);
}

}  // namespace AESCipher
