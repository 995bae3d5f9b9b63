// SPDX-License-Identifier: MIT
#include "core/primitives/ChaCha20Stream.h"
#include "core/primitives/Salsa20Stream.h"
#include "tests/core/primitives/Hex.h"

#include <gtest/gtest.h>

namespace {

// RFC 8439, section 2.4.2.
TEST(ChaCha20StreamTest, enciphersThePublishedText) {
    const auto key = fromHex("000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f");
    ChaCha20Stream stream(key, fromHex("000000000000004a00000000"), 1);

    const auto enciphered = stream.process(
        bytesOf("Ladies and Gentlemen of the class of '99: If I could offer you only one tip for the future, "
                "sunscreen would be it."));

    EXPECT_EQ(toHex(enciphered),
              "6e2e359a2568f98041ba0728dd0d6981e97e7aec1d4360c20a27afccfd9fae0b"
              "f91b65c5524733ab8f593dabcd62b3571639d624e65152ab8f530c359f0861d8"
              "07ca0dbf500d6a6156a38e088a22b65e52bc514d16ccf806818ce91ab7793736"
              "5af90bbf74a35be6b40b8eedf2785e42874d");
}

// ECRYPT's verified vectors for Salsa20/20, set 1, vector 0, the first block.
TEST(Salsa20StreamTest, givesThePublishedKeystreamForBothKeySizes) {
    auto key = Bytes(32, 0);
    key[0] = 0x80;
    Salsa20Stream wide(key, Bytes(8, 0));
    Salsa20Stream narrow(ByteView(key).first(16), Bytes(8, 0));

    EXPECT_EQ(toHex(wide.process(Bytes(64, 0))),
              "e3be8fdd8beca2e3ea8ef9475b29a6e7003951e1097a5c38d23b7a5fad9f6844"
              "b22c97559e2723c7cbbd3fe4fc8d9a0744652a83e72a9c461876af4d7ef1a117");
    EXPECT_EQ(toHex(narrow.process(Bytes(64, 0))),
              "4dfa5e481da23ea09a31022050859936da52fcee218005164f267cb65f5cfd7f"
              "2b4f97e0ff16924a52df269515110a07f9e460bc65ef95da58f740b7d1dbb0aa");
}

}  // namespace
