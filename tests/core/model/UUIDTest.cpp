// SPDX-License-Identifier: MIT
#include "core/model/UUID.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <unordered_set>
#include <vector>

namespace {

// RFC 9562, section 4.
constexpr auto canonicalText = "F81D4FAE-7DEC-11D0-A765-00A0C91E6BF6";
constexpr std::array<std::uint8_t, 16> canonicalBytes{0xF8, 0x1D, 0x4F, 0xAE, 0x7D, 0xEC, 0x11, 0xD0,
                                                      0xA7, 0x65, 0x00, 0xA0, 0xC9, 0x1E, 0x6B, 0xF6};

TEST(UUIDTest, keepsTheBytesInTheOrderOfTheText) {
    const auto id = UUID::fromKdbxBytes(canonicalBytes).value();
    EXPECT_EQ(id.kdbxBytes(), canonicalBytes);
    EXPECT_EQ(id.text(), canonicalText);
    EXPECT_EQ(UUID::fromText(canonicalText), id);
}

TEST(UUIDTest, isMadeOfSixteenBytesAndNoOtherNumber) {
    for (const std::size_t count : {0, 15, 17, 32})
        EXPECT_FALSE(UUID::fromKdbxBytes(Bytes(count, 0))) << count;
    EXPECT_TRUE(UUID::fromKdbxBytes(Bytes(16, 0)));
}

TEST(UUIDTest, readsItsTextInEitherLetterCase) {
    EXPECT_EQ(UUID::fromText("f81d4fae-7dec-11d0-a765-00a0c91e6bf6"), UUID::fromKdbxBytes(canonicalBytes));
    EXPECT_EQ(UUID::fromText("f81D4fae-7dec-11D0-a765-00a0C91e6bf6"), UUID::fromKdbxBytes(canonicalBytes));
}

TEST(UUIDTest, readsNoOtherText) {
    for (const auto* text : {"", "F81D4FAE7DEC11D0A76500A0C91E6BF6", "F81D4FAE-7DEC-11D0-A765-00A0C91E6BF",
                             "F81D4FAE-7DEC-11D0-A765-00A0C91E6BF66", "{81D4FAE-7DEC-11D0-A765-00A0C91E6BF}",
                             "F81D4FAE-7DEC-11D0-A76-500A0C91E6BF6", "F81D4FAE07DEC-11D0-A765-00A0C91E6BF6",
                             "G81D4FAE-7DEC-11D0-A765-00A0C91E6BF6", "F81D4FAE-7DEC-11D0-A765-00A0C91E6B/:",
                             "F81D4FAE-7DEC-11D0-A765-00A0C91E6B@`", " 81D4FAE-7DEC-11D0-A765-00A0C91E6BF6"})
        EXPECT_FALSE(UUID::fromText(text)) << text;
}

TEST(UUIDTest, isOrderedAsItsTextIs) {
    std::vector<UUID> ids{UUID()};
    for (std::size_t byte = 0; byte < canonicalBytes.size(); ++byte)
        for (const std::uint8_t value : {0x01, 0x7F, 0x80, 0xFF}) {
            auto bytes = canonicalBytes;
            bytes[byte] = value;
            ids.push_back(UUID::fromKdbxBytes(bytes).value());
        }
    for (const auto& a : ids)
        for (const auto& b : ids) {
            EXPECT_EQ(a < b, a.text() < b.text()) << a.text() << ' ' << b.text();
            EXPECT_EQ(a == b, a.text() == b.text()) << a.text() << ' ' << b.text();
        }
}

TEST(UUIDTest, aNewOneIsRandomButForItsVersionAndItsVariant) {
    std::unordered_set<UUID> ids;
    std::array<std::uint8_t, 16> seen{};
    for (int i = 0; i < 2'000; ++i) {
        const auto id = UUID::random();
        EXPECT_EQ(id.kdbxBytes()[6] >> 4, 4);
        EXPECT_EQ(id.kdbxBytes()[8] >> 6, 2);
        for (std::size_t byte = 0; byte < seen.size(); ++byte)
            seen[byte] |= id.kdbxBytes()[byte];
        ids.insert(id);
    }
    EXPECT_EQ(ids.size(), 2'000u);
    for (std::size_t byte = 0; byte < seen.size(); ++byte)
        EXPECT_EQ(seen[byte], byte == 6 ? 0x4F : byte == 8 ? 0xBF : 0xFF) << byte;
}

TEST(UUIDTest, aForkedChildDrawsOthersThanItsParent) {
    static_cast<void>(UUID::random());
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const auto child = ::fork();
    if (child == 0) {
        const auto id = UUID::random();
        ::_exit(::write(ends[1], id.kdbxBytes().data(), 16) == 16 ? 0 : 1);
    }
    std::array<std::uint8_t, 16> ofChild{};
    ASSERT_EQ(::read(ends[0], ofChild.data(), ofChild.size()), 16);
    ASSERT_EQ(::waitpid(child, nullptr, 0), child);
    ::close(ends[0]);
    ::close(ends[1]);

    EXPECT_NE(UUID::random().kdbxBytes(), ofChild);
}

TEST(UUIDTest, onlyTheOneOfZerosIsZero) {
    EXPECT_TRUE(UUID().isZero());
    EXPECT_EQ(UUID().text(), "00000000-0000-0000-0000-000000000000");
    EXPECT_FALSE(UUID::fromText("00000000-0000-0000-0000-000000000001")->isZero());
}

TEST(UUIDTest, everyByteCountsInTheHash) {
    const std::hash<UUID> hash;
    for (std::size_t byte = 0; byte < 16; ++byte) {
        std::array<std::uint8_t, 16> bytes{};
        bytes[byte] = 1;
        EXPECT_NE(hash(*UUID::fromKdbxBytes(bytes)), hash(UUID())) << byte;
    }
}

}  // namespace
