// SPDX-License-Identifier: MIT
#include "core/primitives/Base64.h"

#include <gtest/gtest.h>

namespace {

std::string decodedStrictly(std::string_view text) {
    const auto bytes = Base64::decodeStrict(text);
    return bytes ? std::string(textOf(*bytes)) : "none";
}

// RFC 4648, section 10.
TEST(Base64Test, givesThePublishedVectorsInBothDirections) {
    const std::pair<const char*, const char*> vectors[] = {{"", ""},
                                                           {"f", "Zg=="},
                                                           {"fo", "Zm8="},
                                                           {"foo", "Zm9v"},
                                                           {"foob", "Zm9vYg=="},
                                                           {"fooba", "Zm9vYmE="},
                                                           {"foobar", "Zm9vYmFy"}};
    for (const auto& [plain, encoded] : vectors) {
        EXPECT_EQ(Base64::encode(bytesOf(plain)), encoded);
        EXPECT_EQ(decodedStrictly(encoded), plain);
    }
}

TEST(Base64Test, strictDecodingRefusesForeignCharactersAndWrongPadding) {
    for (const auto* text : {"Zm9v\n", "Zm 9v", "Zg=", "Zg", "Z", "Zg===", "=", "Zg==Zg==", "Z===", "Zm9vZ"})
        EXPECT_EQ(decodedStrictly(text), "none") << text;
}

TEST(Base64Test, lenientDecodingPassesOverForeignCharactersButWantsTheRestWhole) {
    EXPECT_EQ(textOf(Base64::decodeLenient(" Zm\n9-v!YmFy ").value()), "foobar");
    EXPECT_FALSE(Base64::decodeLenient("Zm9vY\n"));
    EXPECT_TRUE(Base64::decodeLenient("?!").value().empty());
}

TEST(Base64Test, appendsBehindWhatABufferHolds) {
    Bytes buffer = copyOf(bytesOf("<"));
    Base64::appendEncoded(buffer, bytesOf("fo"));
    EXPECT_EQ(textOf(buffer), "<Zm8=");
}

}  // namespace
