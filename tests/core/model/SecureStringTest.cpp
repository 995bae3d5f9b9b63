// SPDX-License-Identifier: MIT
#include "core/model/SecureString.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool watchesMemory = true;
#else
constexpr bool watchesMemory = false;
#endif

bool isAllZero(const void* memory, std::size_t size) {
    const auto* bytes = static_cast<const volatile unsigned char*>(memory);
    for (std::size_t i = 0; i < size; ++i)
        if (bytes[i] != 0)
            return false;
    return true;
}

TEST(SecureStringTest, givesItsTextBack) {
    for (const auto* text : {"gizli", "ş", "a\u0301 👨‍👩‍👧", " "})
        EXPECT_EQ(SecureString(text).value(), text);
    EXPECT_EQ(SecureString(std::string_view("a\0b", 3)).value(), std::string("a\0b", 3));
}

TEST(SecureStringTest, theEmptySecretIsEmptyAndHasNoPad) {
    for (const auto& secret : {SecureString(), SecureString("")}) {
        EXPECT_TRUE(secret.isEmpty());
        EXPECT_EQ(secret.value(), "");
        EXPECT_TRUE(secret.cipher().empty());
        EXPECT_TRUE(secret.pad().empty());
    }
    EXPECT_FALSE(SecureString("a").isEmpty());
}

TEST(SecureStringTest, masksAsManyBytesAsTheTextHasInUTF8) {
    const SecureString secret("ş");
    EXPECT_EQ(secret.cipher().size(), 2u);
    EXPECT_EQ(secret.pad().size(), 2u);
}

TEST(SecureStringTest, theTextIsTheMaskedBytesUnderThePad) {
    const std::string text = "a secret that is long enough to be told from chance";
    const SecureString secret(text);
    std::string unmasked;
    for (std::size_t i = 0; i < text.size(); ++i)
        unmasked += static_cast<char>(secret.cipher()[i] ^ secret.pad()[i]);
    EXPECT_EQ(unmasked, text);
    EXPECT_NE(textOf(secret.cipher()), text);
    EXPECT_NE(textOf(secret.pad()), text);
}

TEST(SecureStringTest, theTextOfMegabytesIsMaskedByAPadOfItsOwnToo) {
    const std::string text(1'000'003, 'a');
    const SecureString a(text);
    const SecureString b(text);
    EXPECT_EQ(a.value(), text);
    EXPECT_EQ(a, b);
    EXPECT_FALSE(std::ranges::equal(a.pad(), b.pad()));
    EXPECT_EQ(textOf(a.cipher()).find("aaaaaaaa"), std::string::npos);
    EXPECT_LT(std::ranges::count(a.pad(), 0), 2 * 1'000'003 / 256);
}

TEST(SecureStringTest, twoOfOneTextAreEqualThoughTheirBytesDiffer) {
    const SecureString a("parola parola parola");
    const SecureString b("parola parola parola");
    EXPECT_EQ(a, b);
    EXPECT_FALSE(std::ranges::equal(a.cipher(), b.cipher()));
}

TEST(SecureStringTest, equivalentTextsOfDifferentBytesAreEqual) {
    EXPECT_EQ(SecureString("ş"), SecureString("s\u0327"));
    EXPECT_NE(SecureString("ş"), SecureString("s"));
    EXPECT_NE(SecureString("a"), SecureString());
    EXPECT_EQ(SecureString(), SecureString(""));
}

TEST(SecureStringTest, copiesShareOneObject) {
    const SecureString secret("gizli");
    const auto copy = secret;
    EXPECT_EQ(copy.cipher().data(), secret.cipher().data());
    EXPECT_EQ(copy, secret);
}

TEST(SecureStringTest, bytesThatAreNoTextAreGivenRepaired) {
    EXPECT_EQ(SecureString("a\xFFz").value(), "a\uFFFDz");
}

TEST(SecureStringTest, bothBuffersAreWipedWithTheLastCopyAndNotBefore) {
    if (watchesMemory)
        GTEST_SKIP() << "looks into memory that was given back";
    constexpr std::size_t length = 800;
    // The allocator writes its own lists into the first bytes of what it gets back.
    constexpr std::size_t ofAllocator = 32;
    auto secret = std::make_unique<SecureString>(std::string(length, 'x'));
    auto copy = std::make_unique<SecureString>(*secret);
    const auto* cipher = secret->cipher().data();
    const auto* pad = secret->pad().data();

    secret.reset();
    EXPECT_EQ(copy->value(), std::string(length, 'x'));
    copy.reset();

    EXPECT_TRUE(isAllZero(cipher + ofAllocator, length - ofAllocator));
    EXPECT_TRUE(isAllZero(pad + ofAllocator, length - ofAllocator));
}

TEST(WipeTest, emptiesTheTextAndLeavesNothingInItsMemory) {
    for (const std::size_t length : {0, 1, 15, 16, 1'000}) {
        std::string text(length, 'x');
        wipe(text);
        EXPECT_TRUE(text.empty());
        EXPECT_TRUE(isAllZero(text.data(), text.capacity() + 1)) << length;
    }
}

TEST(WipeTest, overwritesAlsoWhatLiesBehindTheEnd) {
    if (watchesMemory)
        GTEST_SKIP() << "looks into memory that was given back";
    std::string text(800, 'x');
    const auto* memory = text.data();
    text.resize(3);

    wipe(text);

    EXPECT_TRUE(isAllZero(memory + 32, 800 - 32));
}

TEST(WipeTest, overwritesAShortTextThatStoodWhereALongOnesLengthIsKept) {
    std::string text = "on beş harfli!";
    text.reserve(100);
    wipe(text);
    EXPECT_TRUE(isAllZero(text.data(), text.capacity() + 1));
    EXPECT_FALSE(std::string_view(reinterpret_cast<const char*>(&text), sizeof text).find("harfli") !=
                 std::string_view::npos);
}

}  // namespace
