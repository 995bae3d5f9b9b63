// SPDX-License-Identifier: MIT
#include "core/primitives/Sha2.h"

#include "tests/core/primitives/Material.h"
#include "tests/core/primitives/Vectors.h"

#include <gtest/gtest.h>
#include <openssl/hmac.h>
#include <openssl/sha.h>
#include <sodium.h>

#include <thread>
#include <vector>

namespace {

Bytes messageOf(const Vector& vector) {
    return vector.has("text") ? copyOf(bytesOf(vector.text("text"))) : vector.bytes("message");
}

TEST(Sha2Test, givesThePublishedDigests) {
    for (const auto& vector : vectorsIn("sha2.txt")) {
        if (vector.has("sha256")) {
            EXPECT_EQ(toHex(Sha2::sha256(messageOf(vector))), vector.text("sha256")) << vector.name();
        }
        if (vector.has("sha512")) {
            EXPECT_EQ(toHex(Sha2::sha512(messageOf(vector))), vector.text("sha512")) << vector.name();
        }
    }
}

// FIPS 180-4 examples: a million times "a".
TEST(Sha2Test, givesThePublishedDigestsOfAMillionLetters) {
    const Bytes letters(1000000, 'a');

    EXPECT_EQ(toHex(Sha2::sha256(letters)), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
    EXPECT_EQ(toHex(Sha2::sha512(letters)),
              "e718483d0ce769644e2e42c7bc15b4638e1f98b13b2044285632a803afa973ebde0ff244877ea60a4cb0432ce577c31b"
              "eb009c5c2c49aa2e4eadb217ad8cc09b");
}

TEST(Sha2Test, hmacGivesThePublishedCodes) {
    for (const auto& vector : vectorsIn("hmac-sha256.txt")) {
        const auto mac = Sha2::hmacSha256({.key = vector.bytes("key")}, {vector.bytes("data")});
        const auto published = vector.bytes("mac");

        EXPECT_EQ(mac.size(), 32U);
        EXPECT_EQ(toHex(ByteView(mac).first(published.size())), toHex(published)) << vector.name();
    }
}

TEST(Sha2Test, agreesWithThePeersForEveryLengthAroundTheFirstBlocks) {
    Material material(1);
    for (std::size_t size = 0; size <= 300; ++size) {
        const auto data = material.bytes(size);
        Bytes sha256(32);
        Bytes sha512(64);
        crypto_hash_sha256(sha256.data(), data.data(), size);
        crypto_hash_sha512(sha512.data(), data.data(), size);
        EXPECT_EQ(toHex(Sha2::sha256(data)), toHex(sha256)) << size;
        EXPECT_EQ(toHex(Sha2::sha512(data)), toHex(sha512)) << size;
    }
}

TEST(Sha2Test, hmacAgreesWithThePeerForEveryKeyLengthAroundTheBlock) {
    Material material(2);
    for (std::size_t size = 0; size <= 200; ++size) {
        const auto key = material.bytes(size);
        const auto data = material.bytes(material.number(0, 300));
        Bytes expected(32);
        unsigned length = 0;
        const Bytes someKey = size == 0 ? Bytes(1, 0) : key;  // the peer takes no key at all for the one before
        HMAC(EVP_sha256(), someKey.data(), static_cast<int>(size), data.data(), data.size(), expected.data(), &length);
        EXPECT_EQ(toHex(Sha2::hmacSha256({.key = key}, {data})), toHex(expected)) << size;
    }
}

TEST(Sha2Test, piecesAreHashedAsIfTheyStoodInARow) {
    Material material(3);
    for (int i = 0; i < 100; ++i) {
        const auto data = material.bytes(material.number(0, 500));
        const auto first = material.number(0, static_cast<std::uint32_t>(data.size()));
        const auto a = ByteView(data).first(first);
        const auto rest = ByteView(data).subspan(first);
        const auto b = rest.first(material.number(0, static_cast<std::uint32_t>(rest.size())));
        const auto c = rest.subspan(b.size());
        const auto key = material.bytes(64);
        EXPECT_EQ(Sha2::sha256({a, b, c}), Sha2::sha256(data));
        EXPECT_EQ(Sha2::sha512({a, b, c}), Sha2::sha512(data));
        EXPECT_EQ(Sha2::hmacSha256({.key = key}, {a, b, c}), Sha2::hmacSha256({.key = key}, {data}));
    }
    EXPECT_EQ(Sha2::sha256({}), Sha2::sha256(ByteView()));
}

TEST(Sha2Test, eachThreadHasItsOwnContext) {
    const auto expected = Sha2::hmacSha256({.key = bytesOf("anahtar")}, {bytesOf("belge")});
    std::vector<int> wrong(4, 0);
    std::vector<std::thread> threads;
    for (auto& count : wrong)
        threads.emplace_back([&] {
            for (int i = 0; i < 2000; ++i)
                count += Sha2::hmacSha256({.key = bytesOf("anahtar")}, {bytesOf("belge")}) != expected ? 1 : 0;
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(wrong, std::vector<int>(4, 0));
}

}  // namespace
