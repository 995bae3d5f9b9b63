// SPDX-License-Identifier: MIT
#include "core/primitives/Gzip.h"
#include "core/primitives/LittleEndian.h"

#include <gtest/gtest.h>
#include <libdeflate.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zlib.h>

#include <cstring>
#include <functional>
#include <vector>

namespace {

constexpr std::uint64_t mebibyte = 1 << 20;

/// The DEFLATE blocks of a mebibyte of zeros, which end on a whole byte and let others follow.
Bytes mebibyteOfZeros() {
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY);
    Bytes zeros(mebibyte, 0);
    Bytes out(10000);
    stream.next_in = zeros.data();
    stream.avail_in = static_cast<uInt>(zeros.size());
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, Z_FULL_FLUSH);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

/// A member of about a thousandth of what it inflates to.
Bytes bomb(std::uint64_t mebibytes) {
    Bytes member{0x1F, 0x8B, 8, 0, 0, 0, 0, 0, 0, 3};
    const auto piece = mebibyteOfZeros();
    member.reserve(mebibytes * piece.size() + 20);
    for (std::uint64_t i = 0; i < mebibytes; ++i)
        append(member, piece);
    append(member, Bytes{0x03, 0x00});  // the last block, and empty
    appendLE(member, std::uint32_t{0});
    appendLE(member, static_cast<std::uint32_t>(mebibytes * mebibyte));
    return member;
}

std::string outcomeOf(const std::function<void()>& operation) {
    try {
        operation();
    } catch (const Gzip::Error& error) {
        return error.errorDescription();
    }
    return "served";
}

struct ChildsEnd {
    bool said = false;             // what it was expected to
    std::uint64_t peakMemory = 0;  // bytes
};

/// Runs `operation` in a process of its own that may have `extraMemory` more than it has.
ChildsEnd runWithin(std::uint64_t extraMemory, const std::string& expectedOutcome,
                    const std::function<void()>& operation) {
    const auto child = fork();
    if (child == 0) {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        std::uint64_t pages = 0;
        if (auto* const file = std::fopen("/proc/self/statm", "r")) {
            if (std::fscanf(file, "%lu", &pages) != 1)
                _exit(2);
            std::fclose(file);
        }
        const rlimit limit{pages * 4096 + extraMemory, RLIM_INFINITY};
        setrlimit(RLIMIT_AS, &limit);
        _exit(outcomeOf(operation) == expectedOutcome ? 0 : 1);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    return {WIFEXITED(status) && WEXITSTATUS(status) == 0, static_cast<std::uint64_t>(usage.ru_maxrss) * 1024};
}

bool memoryCanBeLimited() {
#if defined(__SANITIZE_ADDRESS__)
    return false;  // its shadow is larger than any limit
#elif defined(__has_feature)
    return !__has_feature(address_sanitizer);
#else
    return true;
#endif
}

const std::string streamFailure = "Gzip: sıkıştırma akışı başarısız.";

TEST(GzipMemoryTest, tenMegabytesThatInflateToTenGigabytesFailWhereTheProcessIsLimited) {
    if (!memoryCanBeLimited())
        GTEST_SKIP() << "the sanitizer's own memory comes first";
    const auto member = bomb(10 * 1024);
    ASSERT_LT(member.size(), 11 * mebibyte);

    const auto end = runWithin(600 * mebibyte, streamFailure, [&] { (void)Gzip::decompress(member); });

    EXPECT_TRUE(end.said);
    EXPECT_LT(end.peakMemory, 700 * mebibyte);
}

TEST(GzipMemoryTest, tenMegabytesThatInflateToTenGigabytesTakeNoMoreThanIsAllowed) {
    const auto member = bomb(10 * 1024);
    const auto before = runWithin(RLIM_INFINITY / 2, "served", [] {});

    const auto end =
        runWithin(RLIM_INFINITY / 2, streamFailure, [&] { (void)Gzip::decompress(member, 400 * mebibyte); });

    EXPECT_TRUE(end.said);
    if (memoryCanBeLimited()) {
        EXPECT_LT(end.peakMemory, before.peakMemory + 410 * mebibyte);
    }
}

TEST(GzipMemoryTest, aTrailerThatPromisesFourGigabytesTakesOnlyAShareOfTheFile) {
    auto member = Gzip::compress(Bytes(mebibyte, 7));
    storeLE(member.data() + member.size() - 4, std::uint32_t{0xFFFFFFFF});
    const auto before = runWithin(RLIM_INFINITY / 2, "served", [] {});

    const auto end = runWithin(RLIM_INFINITY / 2, Gzip::Error::sizeMismatch({0xFFFFFFFF, mebibyte}).errorDescription(),
                               [&] { (void)Gzip::decompress(member); });

    EXPECT_TRUE(end.said);
    EXPECT_LT(end.peakMemory, before.peakMemory + 16 * mebibyte);
}

TEST(GzipMemoryTest, whatInflatesAThousandfoldIsServedWhereThereIsRoom) {
    auto member = bomb(64);
    const std::vector<std::uint8_t> zeros(64 * mebibyte, 0);
    storeLE(member.data() + member.size() - 8, Gzip::crc32(zeros));

    const auto inflated = Gzip::decompress(member);

    ASSERT_EQ(inflated.size(), zeros.size());
    EXPECT_EQ(std::memcmp(inflated.data(), zeros.data(), zeros.size()), 0);
}

TEST(GzipMemoryTest, compressingFailsWhereMemoryEnds) {
    if (!memoryCanBeLimited())
        GTEST_SKIP() << "the sanitizer's own memory comes first";
    const std::vector<std::uint8_t> data(64 * mebibyte, 7);

    EXPECT_TRUE(runWithin(32 * mebibyte, streamFailure, [&] { (void)Gzip::compress(data); }).said);
}

TEST(GzipMemoryTest, aLibraryThatGetsNoMemoryIsAFailure) {
    const auto member = Gzip::compress(bytesOf("belge"));
    libdeflate_set_memory_allocator([](std::size_t) -> void* { return nullptr; }, std::free);

    const auto compressing = outcomeOf([] { (void)Gzip::compress(bytesOf("belge")); });
    const auto decompressing = outcomeOf([&] { (void)Gzip::decompress(member); });
    libdeflate_set_memory_allocator(std::malloc, std::free);

    EXPECT_EQ(compressing, streamFailure);
    EXPECT_EQ(decompressing, streamFailure);
}

}  // namespace
