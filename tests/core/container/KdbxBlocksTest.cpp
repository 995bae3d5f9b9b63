// SPDX-License-Identifier: MIT
#include "core/container/KdbxCrypto.h"
#include "core/primitives/LittleEndian.h"
#include "core/primitives/Sha2.h"
#include "tests/support/Failures.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

constexpr std::size_t hmacOverhead = 36;
constexpr std::size_t hashedOverhead = 40;

const Bytes hmacKey(64, 0x5A);

Bytes readHMAC(ByteView stream) {
    KdbxReader reader(stream);
    return KdbxCrypto::readHMACBlocks(reader, {.key = hmacKey});
}

Bytes readHashed(ByteView stream) {
    KdbxReader reader(stream);
    return KdbxCrypto::readHashedBlocks(reader);
}

std::string readingHMAC(ByteView stream) {
    return outcomeOf([&] { return readHMAC(stream); });
}

std::string readingHashed(ByteView stream) {
    return outcomeOf([&] { return readHashed(stream); });
}

/// One block of the KDBX 3 stream, under any index and hash.
Bytes hashedBlock(std::uint32_t index, ByteView data, const Bytes& hash) {
    Bytes block;
    appendLE(block, index);
    append(block, hash);
    appendLE(block, static_cast<std::uint32_t>(data.size()));
    append(block, data);
    return block;
}

Bytes hashedBlock(std::uint32_t index, std::string_view data) {
    return hashedBlock(index, bytesOf(data), data.empty() ? Bytes(32, 0) : Sha2::sha256(bytesOf(data)));
}

Bytes joined(std::initializer_list<Bytes> pieces) {
    Bytes bytes;
    for (const auto& piece : pieces)
        append(bytes, piece);
    return bytes;
}

TEST(HMACBlocksTest, aBlocksKeyIsAHashOfItsIndexAndTheBaseKey) {
    EXPECT_EQ(toHex(KdbxCrypto::blockKey(0, {.key = hmacKey})),
              "1235bc2f2675eef9598790e9c6b970440c9db5d3b2033dc1beead9f214e1899a"
              "d43295b0f81c9854b9ed86b4bbd0cffe7fa3c182b2a3a007e88a50ac291e41ba");
}

TEST(HMACBlocksTest, areFramedByHMACAndSize) {
    EXPECT_EQ(toHex(KdbxCrypto::writeHMACBlocks(bytesOf("abcde"), {.key = hmacKey}, 3)),
              "404a7606f703f3e9cd74891fe2b60203cd0f410dc3aaf8aaf53eb955f98823f2"
              "03000000"
              "616263"
              "4409be68e52d63e8dc94dc275a4b44e733a7b104b250f20cc40a4921eaee99e4"
              "02000000"
              "6465"
              "8eaef89c4f5b7112339239621f4179b696125e6237bd40cbd51e37d33988444f"
              "00000000");
}

TEST(HMACBlocksTest, readBackWhatWasWritten) {
    for (const std::size_t size : {0, 1, 2, 3, 4, 6, 7}) {
        const Bytes data(size, 0x77);
        EXPECT_EQ(readHMAC(KdbxCrypto::writeHMACBlocks(data, {.key = hmacKey}, 3)), data) << size;
    }
}

TEST(HMACBlocksTest, aFullBlockStandsAloneBeforeTheTerminator) {
    const auto blocks = [](std::size_t size) {
        const auto stream = KdbxCrypto::writeHMACBlocks(Bytes(size, 1), {.key = hmacKey}, KdbxCrypto::defaultBlockSize);
        return (stream.size() - size) / hmacOverhead;
    };
    EXPECT_EQ(KdbxCrypto::defaultBlockSize, 1048576u);
    EXPECT_EQ(blocks(0), 1u);
    EXPECT_EQ(blocks(1048575), 2u);
    EXPECT_EQ(blocks(1048576), 2u);
    EXPECT_EQ(blocks(1048577), 3u);
}

TEST(HMACBlocksTest, aChangedByteNamesItsBlock) {
    const auto stream = KdbxCrypto::writeHMACBlocks(bytesOf("aaabbbccc"), {.key = hmacKey}, 3);
    const auto blockSize = hmacOverhead + 3;
    for (std::size_t i = 0; i < stream.size(); ++i) {
        const auto block = static_cast<int>(std::min<std::size_t>(i / blockSize, 3));
        const auto place = i - static_cast<std::size_t>(block) * blockSize;
        auto changed = stream;
        changed[i] ^= 1;
        const auto outcome = readingHMAC(changed);
        if (place < 32 || place >= 36)
            EXPECT_EQ(outcome, blockHmacMismatch(block)) << i;
        else
            EXPECT_TRUE(outcome == blockHmacMismatch(block) || outcome.find("kısa veri") != std::string::npos) << i;
    }
}

TEST(HMACBlocksTest, swappedBlocksFailThoughNoIndexIsStored) {
    const auto stream = KdbxCrypto::writeHMACBlocks(bytesOf("aaabbb"), {.key = hmacKey}, 3);
    const auto view = ByteView(stream);
    auto swapped = copyOf(view.subspan(39, 39));
    append(swapped, view.first(39));
    append(swapped, view.subspan(78));

    EXPECT_EQ(readingHMAC(swapped), blockHmacMismatch(0));
    EXPECT_EQ(readingHMAC(view.subspan(39)), blockHmacMismatch(0));
}

TEST(HMACBlocksTest, theTerminatorIsAuthenticatedBeforeItIsBelieved) {
    const auto stream = KdbxCrypto::writeHMACBlocks(bytesOf("aaa"), {.key = hmacKey}, 3);
    auto cut = copyOf(ByteView(stream).first(39));
    append(cut, Bytes(36, 0));

    EXPECT_EQ(readingHMAC(cut), blockHmacMismatch(1));
}

TEST(HMACBlocksTest, whatFollowsTheTerminatorStaysInTheReader) {
    auto stream = KdbxCrypto::writeHMACBlocks(bytesOf("abc"), {.key = hmacKey}, 3);
    append(stream, bytesOf("fazla"));
    KdbxReader reader(stream);

    EXPECT_EQ(textOf(KdbxCrypto::readHMACBlocks(reader, {.key = hmacKey})), "abc");
    EXPECT_EQ(reader.remaining(), 5);
}

TEST(HMACBlocksTest, everyPrefixRunsShort) {
    const auto stream = KdbxCrypto::writeHMACBlocks(bytesOf("abcd"), {.key = hmacKey}, 3);
    for (std::size_t size = 0; size < stream.size(); ++size)
        EXPECT_TRUE(readingHMAC(ByteView(stream).first(size)).find("beklenenden kısa veri") != std::string::npos)
            << size;
    EXPECT_EQ(readingHMAC({}), shortData(32, 0));
    EXPECT_EQ(readingHMAC(ByteView(stream).first(34)), shortData(4, 2));
    EXPECT_EQ(readingHMAC(ByteView(stream).first(37)), shortData(3, 1));
}

TEST(HMACBlocksTest, aDeclaredSizeIsComparedWithWhatIsLeft) {
    EXPECT_EQ(readingHMAC(joined({Bytes(32, 0), fromHex("ffffffff"), Bytes(9)})), shortData(4294967295, 9));
}

TEST(HMACBlocksTest, theHeadersHMACIsNeverABlocks) {
    Bytes message;
    appendLE(message, std::uint64_t{0});
    appendLE(message, std::uint32_t{0});
    const auto stream = KdbxCrypto::writeHMACBlocks({}, {.key = hmacKey}, 3);
    EXPECT_NE(KdbxCrypto::headerHMAC(message, {.key = hmacKey}), copyOf(ByteView(stream).first(32)));
}

TEST(HMACBlocksDeathTest, aBlockSizeThatDoesNotFitIsAProgrammersFault) {
    EXPECT_DEATH((void)KdbxCrypto::writeHMACBlocks(Bytes(1), {.key = hmacKey}, 0), "precondition failed");
    EXPECT_DEATH((void)KdbxCrypto::writeHashedBlocks(Bytes(1), std::size_t{1} << 32), "precondition failed");
}

TEST(HashedBlocksTest, areFramedByIndexHashAndSize) {
    EXPECT_EQ(toHex(KdbxCrypto::writeHashedBlocks(bytesOf("abcde"), 3)),
              "00000000"
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"
              "03000000"
              "616263"
              "01000000"
              "959a45d44e6fcf58361ed004681556fe50129f2109e817dec098c00c9e5d2578"
              "02000000"
              "6465"
              "02000000"
              "0000000000000000000000000000000000000000000000000000000000000000"
              "00000000");
}

TEST(HashedBlocksTest, readBackWhatWasWritten) {
    for (const std::size_t size : {0, 1, 2, 3, 4, 6, 7}) {
        const Bytes data(size, 0x77);
        const auto stream = KdbxCrypto::writeHashedBlocks(data, 3);
        EXPECT_EQ(stream.size(), size + ((size + 2) / 3 + 1) * hashedOverhead) << size;
        EXPECT_EQ(readHashed(stream), data) << size;
    }
}

TEST(HashedBlocksTest, failOutOfOrder) {
    EXPECT_EQ(readingHashed(joined({hashedBlock(0, "a"), hashedBlock(1, "b"), hashedBlock(1, "c")})),
              corruptedData("blok sırası bozuk (1 != 2)"));
    EXPECT_EQ(readingHashed(hashedBlock(0xFFFFFFFF, "")), corruptedData("blok sırası bozuk (4294967295 != 0)"));
    EXPECT_EQ(readingHashed(joined({hashedBlock(0, "a"), hashedBlock(0, "")})),
              corruptedData("blok sırası bozuk (0 != 1)"));
}

TEST(HashedBlocksTest, aTerminatorWithAHashFailsThoughAllBlocksWereGood) {
    EXPECT_EQ(readingHashed(joined({hashedBlock(0, "a"), hashedBlock(1, {}, Sha2::sha256(ByteView()))})),
              corruptedData("sonlandırıcı bloğun hash'i sıfır değil"));
    for (std::size_t i = 0; i < 32; ++i) {
        Bytes hash(32, 0);
        hash[i] = 0x80;
        EXPECT_EQ(readingHashed(hashedBlock(0, {}, hash)), corruptedData("sonlandırıcı bloğun hash'i sıfır değil"));
    }
}

TEST(HashedBlocksTest, aChangedByteOfABlockNamesIt) {
    auto stream = joined({hashedBlock(0, "abc"), hashedBlock(1, "def"), hashedBlock(2, "")});
    stream[40] ^= 1;
    EXPECT_EQ(readingHashed(stream), blockHmacMismatch(0));
    stream[40] ^= 1;
    stream[43 + 4] ^= 1;
    EXPECT_EQ(readingHashed(stream), blockHmacMismatch(1));
}

TEST(HashedBlocksTest, theIndexIsJudgedBeforeTheDataIsRead) {
    const auto stream = joined({fromHex("05000000"), Bytes(32, 1), fromHex("ffffffff")});
    EXPECT_EQ(readingHashed(stream), corruptedData("blok sırası bozuk (5 != 0)"));
}

TEST(HashedBlocksTest, aDeclaredSizeIsComparedWithWhatIsLeft) {
    EXPECT_EQ(readingHashed(joined({fromHex("00000000"), Bytes(32, 1), fromHex("ffffffff"), Bytes(9)})),
              shortData(4294967295, 9));
}

TEST(HashedBlocksTest, everyPrefixRunsShort) {
    const auto stream = KdbxCrypto::writeHashedBlocks(bytesOf("abcd"), 3);
    for (std::size_t size = 0; size < stream.size(); ++size)
        EXPECT_TRUE(readingHashed(ByteView(stream).first(size)).find("beklenenden kısa veri") != std::string::npos)
            << size;
    EXPECT_EQ(readingHashed(Bytes(3, 0)), shortData(4, 3));
    EXPECT_EQ(readingHashed(Bytes(35, 0)), shortData(32, 31));
    EXPECT_EQ(readingHashed(Bytes(39, 0)), shortData(4, 3));
}

TEST(HashedBlocksTest, whatFollowsTheTerminatorStaysInTheReader) {
    auto stream = KdbxCrypto::writeHashedBlocks(bytesOf("abc"), 3);
    append(stream, bytesOf("fazla"));
    KdbxReader reader(stream);

    EXPECT_EQ(textOf(KdbxCrypto::readHashedBlocks(reader)), "abc");
    EXPECT_EQ(reader.remaining(), 5);
}

}  // namespace
