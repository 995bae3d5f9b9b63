// SPDX-License-Identifier: MIT
#include "core/primitives/Bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

namespace {

/// What this program gives back to the heap while it is watched: a copy of every block, as it is at that moment.
struct Heap {
    bool watched = false;
    std::size_t blocks = 0;
    std::size_t bytesThatAreNotZero = 0;
    std::size_t largestBlock = 0;
};
Heap heap;

// The size stands before each block, since not every way of giving back tells it.
constexpr std::size_t prefix = alignof(std::max_align_t);

void* take(std::size_t size) {
    auto* const memory = static_cast<std::uint8_t*>(std::malloc(prefix + size));
    if (!memory)
        throw std::bad_alloc();
    *reinterpret_cast<std::size_t*>(memory) = size;
    return memory + prefix;
}

void giveBack(void* block) noexcept {
    if (!block)
        return;
    auto* const bytes = static_cast<std::uint8_t*>(block);
    const auto size = *reinterpret_cast<std::size_t*>(bytes - prefix);
    if (heap.watched) {
        ++heap.blocks;
        heap.bytesThatAreNotZero += size - static_cast<std::size_t>(std::count(bytes, bytes + size, 0));
        heap.largestBlock = std::max(heap.largestBlock, size);
    }
    std::free(bytes - prefix);
}

}  // namespace

void* operator new(std::size_t size) {
    return take(size);
}
void operator delete(void* block) noexcept {
    giveBack(block);
}
void operator delete(void* block, std::size_t) noexcept {
    giveBack(block);
}

namespace {

class BytesTest : public testing::Test {
protected:
    void SetUp() override { heap = {.watched = true}; }
    void TearDown() override { heap.watched = false; }
};

TEST_F(BytesTest, anOrdinaryVectorWouldBeCaught) {
    { const std::vector<std::uint8_t> bytes(1000, 0xAA); }

    EXPECT_EQ(heap.bytesThatAreNotZero, 1000U);
}

TEST_F(BytesTest, areZerosWhenTheyAreGivenBack) {
    { const Bytes bytes(1000, 0xAA); }

    EXPECT_EQ(heap.blocks, 1U);
    EXPECT_EQ(heap.largestBlock, 1000U);
    EXPECT_EQ(heap.bytesThatAreNotZero, 0U);
}

TEST_F(BytesTest, leaveZerosWhereTheyGrewOutOf) {
    Bytes bytes;
    for (int i = 0; i < 10000; ++i)
        bytes.push_back(0xAA);
    append(bytes, Bytes(20000, 0xAA));
    bytes.resize(100000, 0xAA);
    bytes.shrink_to_fit();

    EXPECT_GT(heap.blocks, 10U);
    EXPECT_EQ(heap.bytesThatAreNotZero, 0U);
}

TEST_F(BytesTest, leaveZerosAlsoBehindTheirEnd) {
    {
        Bytes bytes(1000, 0xAA);
        bytes.resize(1);
    }
    {
        Bytes bytes(1000, 0xAA);
        bytes.clear();
    }

    EXPECT_EQ(heap.bytesThatAreNotZero, 0U);
}

TEST_F(BytesTest, leaveZerosWhereTheyWereAssignedOver) {
    Bytes bytes(1000, 0xAA);
    bytes = Bytes(2000, 0xBB);
    bytes = copyOf(bytesOf("gizli"));
    bytes.assign(5000, 0xCC);
    bytes = {};

    EXPECT_EQ(heap.bytesThatAreNotZero, 0U);
}

TEST_F(BytesTest, keepWhatTheyHoldWhenTheyGrow) {
    auto bytes = copyOf(bytesOf("gizli"));

    append(bytes, bytesOf(" metin"));
    bytes.reserve(100000);

    EXPECT_EQ(textOf(bytes), "gizli metin");
}

TEST_F(BytesTest, areFilledWhenTheyAreGivenAValue) {
    EXPECT_EQ(std::ranges::count(Bytes(1000, 0x5A), 0x5A), 1000);
    Bytes bytes(3, 1);
    bytes.resize(6, 2);
    EXPECT_EQ(bytes, (Bytes{1, 1, 1, 2, 2, 2}));
}

TEST_F(BytesTest, otherElementsAreWipedWhole) {
    { const std::vector<std::uint64_t, WipingAllocator<std::uint64_t>> words(100, ~std::uint64_t{0}); }

    EXPECT_EQ(heap.largestBlock, 800U);
    EXPECT_EQ(heap.bytesThatAreNotZero, 0U);
}

TEST_F(BytesTest, textsWithTheAllocatorAreWiped) {
    using WipedText = std::basic_string<char, std::char_traits<char>, WipingAllocator<char>>;
    { const WipedText text(1000, 'x'); }

    EXPECT_EQ(heap.bytesThatAreNotZero, 0U);
}

TEST(SecureWipeTest, zeroesJustWhatItIsGiven) {
    Bytes bytes(100, 0xAA);

    secureWipe(bytes.data() + 10, 80);

    EXPECT_EQ(std::count(bytes.begin(), bytes.begin() + 10, 0xAA), 10);
    EXPECT_EQ(std::count(bytes.begin() + 10, bytes.begin() + 90, 0), 80);
    EXPECT_EQ(std::count(bytes.begin() + 90, bytes.end(), 0xAA), 10);
}

TEST(SecureWipeTest, nothingIsWipedOfNothing) {
    secureWipe(nullptr, 0);
}

#if !defined(__SANITIZE_ADDRESS__)  // its stack is checked, and partly on the heap

/// Leaves a secret on the stack and tells where.
[[gnu::noinline]] std::uintptr_t leaveOnTheStack() {
    volatile std::uint8_t secret[512];
    for (auto& byte : secret)
        byte = 0xAA;
    return reinterpret_cast<std::uintptr_t>(&secret[0]);
}

/// Read without a call in between, which would write there itself.
[[gnu::noinline]] int countOnTheStack(bool wiped) {
    const auto place = leaveOnTheStack();
    if (wiped)
        wipeUnusedStack();
    const auto* const left = reinterpret_cast<const volatile std::uint8_t*>(place);
    int count = 0;
    for (int i = 0; i < 512; ++i)
        if (left[i] == 0xAA)
            ++count;
    return count;
}

TEST(SecureWipeTest, whatACallLeftOnTheStackIsWiped) {
    EXPECT_GT(countOnTheStack(false), 400);
    EXPECT_EQ(countOnTheStack(true), 0);
}

#endif

TEST(BytesViewTest, borrowTextAndGiveItBack) {
    const std::string text("a\0ş", 4);

    EXPECT_EQ(bytesOf(text).size(), 4U);
    EXPECT_EQ(textOf(bytesOf(text)), text);
    EXPECT_EQ(textOf(copyOf(bytesOf(text))), text);
    EXPECT_TRUE(copyOf({}).empty());
}

TEST_F(BytesTest, comparesInConstantTimeByEveryByteAndTheSize) {
    const Bytes bytes{1, 2, 3};

    EXPECT_TRUE(constantTimeEquals(bytes, Bytes{1, 2, 3}));
    EXPECT_TRUE(constantTimeEquals({}, {}));
    EXPECT_FALSE(constantTimeEquals(bytes, Bytes{0, 2, 3}));
    EXPECT_FALSE(constantTimeEquals(bytes, Bytes{1, 2, 4}));
    EXPECT_FALSE(constantTimeEquals(bytes, Bytes{1, 2}));
}

}  // namespace
