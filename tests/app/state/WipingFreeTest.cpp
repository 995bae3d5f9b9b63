// SPDX-License-Identifier: MIT
#include "tests/support/MemoryScan.h"

#include <gtest/gtest.h>

#include <QString>

#include <cerrno>
#include <cstdint>
#include <cstdlib>

namespace {

class WipingFreeTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!BRENVIK_MEMORY_IS_SCANNABLE)
            GTEST_SKIP() << "the sanitizer keeps what is freed";
    }

    /// The secret in memory that came from `malloc`.
    char* placed(std::size_t size) const {
        auto* const memory = static_cast<char*>(std::malloc(size));
        for (std::size_t i = 0; i < secret.size(); ++i)
            memory[size - secret.size() + i] = static_cast<char>(secret.at(i));
        return memory;
    }

    const MaskedSecret secret = MaskedSecret::text();
    MemoryScan memory;
};

TEST_F(WipingFreeTest, whatTheCLibraryGetsBackIsWiped) {
    for (const std::size_t size : {64, 1000, 100'000}) {
        auto* const text = placed(size);
        EXPECT_EQ(memory.occurrences(secret), 1) << size;
        std::free(text);
        EXPECT_EQ(memory.occurrences(secret), 0) << size;
    }
    std::free(nullptr);
}

TEST_F(WipingFreeTest, memoryThatGrowsLeavesNothingWhereItWas) {
    auto* text = placed(64);
    auto* const inTheWay = std::malloc(64);
    text = static_cast<char*>(std::realloc(text, 10'000));
    EXPECT_EQ(memory.occurrences(secret), 1);
    text = static_cast<char*>(::reallocarray(text, 1000, 100));
    EXPECT_EQ(memory.occurrences(secret), 1);
    EXPECT_EQ(text[0], static_cast<char>(secret.at(0)));
    std::free(text);
    std::free(inTheWay);
    EXPECT_EQ(memory.occurrences(secret), 0);
}

TEST_F(WipingFreeTest, memoryThatShrinksLeavesNothingBehindItsEnd) {
    auto* text = placed(2000);
    text = static_cast<char*>(std::realloc(text, 1000));
    EXPECT_EQ(memory.occurrences(secret), 0);
    std::free(text);
}

TEST_F(WipingFreeTest, growingAnswersAsTheCLibraryDoes) {
    auto* const fresh = std::realloc(nullptr, 10);
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(std::realloc(fresh, 0), nullptr);
    volatile std::size_t tooMany = SIZE_MAX;
    void* volatile kept = std::malloc(10);  // the compiler takes a block that was not moved for one that is gone
    EXPECT_EQ(std::realloc(kept, tooMany / 2), nullptr);
    EXPECT_EQ(::reallocarray(kept, tooMany, 16), nullptr);
    EXPECT_EQ(errno, ENOMEM);
    std::free(kept);
}

TEST_F(WipingFreeTest, whatAnotherLibraryGivesBackIsWiped) {
    Bytes utf16;
    for (std::size_t i = 0; i < secret.size(); ++i)
        utf16.insert(utf16.end(), {secret.at(i), 0});
    const auto wide = MaskedSecret::of(utf16);
    secureWipe(utf16.data(), utf16.size());
    {
        auto text = secret.clear();
        const auto shown = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
        secureWipe(text.data(), text.size());
        EXPECT_EQ(memory.occurrences(wide), 1);
    }
    EXPECT_EQ(memory.occurrences(wide), 0);
}

}  // namespace
