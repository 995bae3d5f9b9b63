// SPDX-License-Identifier: MIT
#include "core/primitives/Argon2.h"

#include "core/primitives/Argon2Memory.h"
#include "core/primitives/Argon2Segment.h"
#include "core/primitives/Argon2Team.h"
#include "core/primitives/AvailableMemory.h"
#include "tests/core/primitives/Material.h"
#include "tests/support/Hex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <set>
#include <system_error>
#include <thread>

namespace {

using Argon2::Variant;

/// Arguments that are served; a test changes the ones that it is about.
struct Arguments {
    Bytes password = copyOf(bytesOf("parola"));
    Bytes salt = copyOf(bytesOf("tuz ve biber"));
    Bytes secret = {};
    Bytes associatedData = {};
    Argon2::Cost cost = {.memoryKiB = 64, .iterations = 2, .parallelism = 1};
    std::int64_t outputLength = 32;
    Variant variant = Variant::id;
    std::uint32_t version = 0x13;

    [[nodiscard]] Argon2::Input input() const {
        return {.password = password, .salt = salt, .secret = secret, .associatedData = associatedData};
    }
    [[nodiscard]] Bytes hash() const { return Argon2::hash(input(), cost, outputLength, variant, version); }
    [[nodiscard]] Bytes hashOn(Implementation implementation) const {
        return Argon2::hashOn(implementation, input(), cost, outputLength, variant, version);
    }
    /// The message of the failure, or nothing.
    [[nodiscard]] std::string failure() const {
        try {
            static_cast<void>(hash());
            return "";
        } catch (const Argon2::Error& error) {
            return error.errorDescription();
        }
    }
};

/// One slice filled over given blocks, in turns of the ranges.
Bytes filled(Argon2::FillSegments fill, ByteView start, Argon2::SegmentContext context,
             const std::vector<Argon2::LaneRange>& ranges) {
    const Argon2::WorkingArea area(context.memoryBlocks);
    std::memcpy(area.words(), start.data(), start.size());
    context.memory = area.words();
    for (const auto range : ranges)
        fill(context, range);
    return {reinterpret_cast<const std::uint8_t*>(area.words()),
            reinterpret_cast<const std::uint8_t*>(area.words()) + start.size()};
}

/// A slice of `segmentLength` blocks in each lane.
Argon2::SegmentContext sliceOf(std::uint32_t lanes, std::uint32_t segmentLength) {
    return {.memory = nullptr,
            .pass = 0,
            .slice = 0,
            .lanes = lanes,
            .laneLength = 4 * segmentLength,
            .segmentLength = segmentLength,
            .memoryBlocks = 4 * segmentLength * lanes,
            .iterations = 2,
            .variant = Variant::d,
            .version = 0x13};
}

class Argon2ImplementationTest : public testing::TestWithParam<Implementation> {
protected:
    /// The common input of RFC 9106, section 5.
    static std::string publishedHash(Variant variant) {
        const Arguments arguments{.password = Bytes(32, 1),
                                  .salt = Bytes(16, 2),
                                  .secret = Bytes(8, 3),
                                  .associatedData = Bytes(12, 4),
                                  .cost = {.memoryKiB = 32, .iterations = 3, .parallelism = 4},
                                  .variant = variant};
        return toHex(arguments.hashOn(GetParam()));
    }
};

// RFC 9106, section 5.1.
TEST_P(Argon2ImplementationTest, givesThePublishedHashOfArgon2d) {
    EXPECT_EQ(publishedHash(Variant::d), "512b391b6f1162975371d30919734294f868e3be3984f3c1a13a4db9fabe4acb");
}

// RFC 9106, section 5.2.
TEST_P(Argon2ImplementationTest, givesThePublishedHashOfArgon2i) {
    EXPECT_EQ(publishedHash(Variant::i), "c814d9d1dc7f37aa13f0d77f2494bda1c8de6b016dd388d29952a4c4672b6ce8");
}

// RFC 9106, section 5.3.
TEST_P(Argon2ImplementationTest, givesThePublishedHashOfArgon2id) {
    EXPECT_EQ(publishedHash(Variant::id), "0d640df58d78766c08c037a34a8b53c9d01ef0452d75b65eb52520e96b01e659");
}

TEST_P(Argon2ImplementationTest, givesThePortableImplementationsHashForRandomParameters) {
    Material material(5);
    for (int i = 0; i < 60; ++i) {
        const auto lanes = material.number(1, 12);
        const Arguments arguments{.password = material.bytes(material.number(0, 40)),
                                  .salt = material.bytes(material.number(8, 40)),
                                  .cost = {.memoryKiB = material.number(8 * lanes, 100 * lanes),
                                           .iterations = material.number(1, 3),
                                           .parallelism = lanes},
                                  .variant = static_cast<Variant>(material.number(0, 2)),
                                  .version = material.number(0, 1) == 0 ? 0x10U : 0x13U};
        ASSERT_EQ(toHex(arguments.hashOn(GetParam())), toHex(arguments.hashOn(Implementation::portable)));
    }
}

TEST_P(Argon2ImplementationTest, fillsTheSameBlocksAsThePortableImplementationLaneByLane) {
    auto context = sliceOf(11, 3);
    const auto start = Material(6).bytes(std::size_t{context.memoryBlocks} * 1024);
    std::vector<Argon2::LaneRange> lanes;
    for (std::uint32_t lane = 0; lane < context.lanes; ++lane)
        lanes.push_back({.first = lane, .count = 1});
    for (const auto variant : {Variant::d, Variant::i, Variant::id})
        for (const std::uint32_t version : {0x10, 0x13})
            for (const std::uint32_t pass : {0, 1})
                for (context.slice = 0; context.slice < 4; ++context.slice) {
                    context.variant = variant;
                    context.version = version;
                    context.pass = pass;
                    const auto portable = filled(Argon2::fillSegmentsPortable, start, context, lanes);
                    const auto fill = Argon2::fillSegmentsFor(GetParam());
                    ASSERT_TRUE(filled(fill, start, context, {{.first = 0, .count = 11}}) == portable)
                        << "pass " << context.pass << ", slice " << context.slice;
                    ASSERT_TRUE(filled(fill, start, context, {{.first = 9, .count = 2}, {.first = 0, .count = 9}}) ==
                                portable);
                }
}

INSTANTIATE_TEST_SUITE_P(Implementations, Argon2ImplementationTest, testing::ValuesIn(supportedVectors()),
                         [](const auto& instance) { return nameOf(instance.param); });

TEST(Argon2Test, hasThePublishedTypeCodes) {
    EXPECT_EQ(static_cast<std::uint32_t>(Variant::d), 0U);
    EXPECT_EQ(static_cast<std::uint32_t>(Variant::i), 1U);
    EXPECT_EQ(static_cast<std::uint32_t>(Variant::id), 2U);
}

TEST(Argon2Test, givesAsManyBytesAsAreAsked) {
    for (std::int64_t length = 4; length <= 200; ++length)
        ASSERT_EQ(Arguments{.outputLength = length}.hash().size(), static_cast<std::size_t>(length));
}

TEST(Argon2Test, servesTheSmallestMemory) {
    const Arguments arguments{.cost = {.memoryKiB = 8, .iterations = 1, .parallelism = 1}};
    EXPECT_EQ(arguments.hash().size(), 32U);
}

TEST(Argon2Test, roundsTheMemoryDownButHashesWhatWasAsked) {
    Arguments arguments{.cost = {.memoryKiB = 32, .iterations = 1, .parallelism = 4}};
    const auto of32 = arguments.hash();
    arguments.cost.memoryKiB = 33;
    EXPECT_NE(toHex(arguments.hash()), toHex(of32));
}

TEST(Argon2Test, fillsAlikeInBothVersionsInTheFirstPassAndDiffersAfterIt) {
    auto context = sliceOf(1, 8);
    const auto start = Material(9).bytes(std::size_t{context.memoryBlocks} * 1024);
    const auto filledIn = [&](std::uint32_t version, std::uint32_t pass) {
        context.version = version;
        context.pass = pass;
        return filled(Argon2::fillSegmentsPortable, start, context, {{.first = 0, .count = 1}});
    };
    for (context.slice = 0; context.slice < 4; ++context.slice) {
        EXPECT_TRUE(filledIn(0x10, 0) == filledIn(0x13, 0));
        EXPECT_FALSE(filledIn(0x10, 1) == filledIn(0x13, 1));
    }

    Arguments arguments{.cost = {.memoryKiB = 32, .iterations = 1, .parallelism = 1}};
    const auto of13 = arguments.hash();
    arguments.version = 0x10;
    EXPECT_NE(toHex(arguments.hash()), toHex(of13));
}

TEST(Argon2Test, takesIdForIInTheFirstTwoSlicesAndForDAfter) {
    auto context = sliceOf(3, 5);
    const auto start = Material(10).bytes(std::size_t{context.memoryBlocks} * 1024);
    const auto filledAs = [&](Variant variant, std::uint32_t pass) {
        context.variant = variant;
        context.pass = pass;
        return filled(Argon2::fillSegmentsPortable, start, context, {{.first = 0, .count = 3}});
    };
    for (context.slice = 0; context.slice < 4; ++context.slice) {
        EXPECT_EQ(filledAs(Variant::id, 0) == filledAs(Variant::d, 0), context.slice >= 2) << context.slice;
        EXPECT_FALSE(filledAs(Variant::i, 0) == filledAs(Variant::d, 0)) << context.slice;
        EXPECT_TRUE(filledAs(Variant::id, 1) == filledAs(Variant::d, 1)) << context.slice;
        EXPECT_FALSE(filledAs(Variant::i, 1) == filledAs(Variant::d, 1)) << context.slice;
    }
}

TEST(Argon2Test, givesTheSameHashHoweverItsThreadsAreScheduled) {
    const Arguments arguments{.cost = {.memoryKiB = 700, .iterations = 3, .parallelism = 7}};
    const auto once = toHex(arguments.hash());
    std::vector<std::jthread> others;
    std::atomic<int> differences = 0;
    for (int i = 0; i < 4; ++i)
        others.emplace_back([&] {
            for (int j = 0; j < 10; ++j)
                differences += toHex(arguments.hash()) == once ? 0 : 1;
        });
    others.clear();
    EXPECT_EQ(differences, 0);
}

std::ptrdiff_t threadsOfThisProcess() {
    const std::filesystem::directory_iterator tasks("/proc/self/task");
    return std::distance(begin(tasks), end(tasks));
}

TEST(Argon2Test, leavesNoThreadBehind) {
    const auto before = threadsOfThisProcess();
    static_cast<void>(Arguments{.cost = {.memoryKiB = 64, .iterations = 1, .parallelism = 8}}.hash());
    EXPECT_EQ(threadsOfThisProcess(), before);
}

TEST(Argon2TeamTest, sharesAllLanesAmongNoMoreThreadsThanAreUseful) {
    for (const std::uint32_t lanes : {1U, 2U, 3U, 7U, 64U}) {
        std::mutex mutex;
        std::vector<int> served(lanes, 0);
        std::set<std::thread::id> threads;
        Argon2::shareLanes(lanes, [&](Argon2::LaneRange range, const std::function<void()>& meet) {
            meet();
            const std::lock_guard lock(mutex);
            threads.insert(std::this_thread::get_id());
            for (auto lane = range.first; lane < range.first + range.count; ++lane)
                ++served.at(lane);
        });
        EXPECT_EQ(served, std::vector<int>(lanes, 1));
        EXPECT_EQ(threads.size(), std::min(lanes, std::max(1U, std::thread::hardware_concurrency())));
        EXPECT_TRUE(threads.contains(std::this_thread::get_id()));
    }
}

TEST(Argon2TeamTest, letsNonePassTheMeetingBeforeAllAreThere) {
    std::atomic<std::uint32_t> arrived = 0;
    std::atomic<bool> early = false;
    Argon2::shareLanes(2, [&](Argon2::LaneRange range, const std::function<void()>& meet) {
        for (std::uint32_t round = 1; round <= 200; ++round) {
            arrived += range.count;
            meet();
            if (arrived < 2 * round)
                early = true;
            meet();
        }
    });
    EXPECT_FALSE(early);
}

/// No thread can be started while this lives: its stack would be larger than the address space.
class NoFurtherThreads {
public:
    NoFurtherThreads() {
        pthread_getattr_default_np(&m_usual);
        pthread_attr_t vast;
        pthread_getattr_default_np(&vast);
        pthread_attr_setstacksize(&vast, std::size_t{1} << 47);
        pthread_setattr_default_np(&vast);
        pthread_attr_destroy(&vast);
    }
    NoFurtherThreads(const NoFurtherThreads&) = delete;
    NoFurtherThreads& operator=(const NoFurtherThreads&) = delete;
    ~NoFurtherThreads() {
        pthread_setattr_default_np(&m_usual);
        pthread_attr_destroy(&m_usual);
    }

private:
    pthread_attr_t m_usual{};
};

TEST(Argon2TeamTest, leavesAllLanesToTheCallerWhereNoThreadCanBeStarted) {
    const Arguments arguments{.cost = {.memoryKiB = 256, .iterations = 2, .parallelism = 4}};
    const auto expected = toHex(arguments.hash());
    const NoFurtherThreads none;
    EXPECT_THROW(std::jthread([] {}), std::system_error);

    EXPECT_EQ(toHex(arguments.hash()), expected);
    Argon2::shareLanes(5, [](Argon2::LaneRange range, const std::function<void()>&) { EXPECT_EQ(range.count, 5U); });
}

TEST(Argon2ErrorTest, hasAMessageForEachCase) {
    using Argon2::Error;
    EXPECT_EQ(Error::invalidParallelism(0).errorDescription(), "Argon2: geçersiz paralellik değeri 0.");
    EXPECT_EQ(Error::invalidMemory(31).errorDescription(), "Argon2: geçersiz bellek değeri 31 KiB.");
    EXPECT_EQ(Error::invalidIterations(0).errorDescription(), "Argon2: geçersiz tur sayısı 0.");
    EXPECT_EQ(Error::invalidOutputLength(-3).errorDescription(), "Argon2: geçersiz çıktı uzunluğu -3.");
    EXPECT_EQ(Error::invalidSaltLength(7).errorDescription(), "Argon2: tuz en az 8 byte olmalı (7).");
    EXPECT_EQ(Error::unsupportedVersion(0x12).errorDescription(), "Argon2: desteklenmeyen sürüm 0x12.");
    EXPECT_EQ(Error::unsupportedVersion(0xABCDEF0).errorDescription(), "Argon2: desteklenmeyen sürüm 0xabcdef0.");
    EXPECT_EQ(Error::unsupportedVersion(0xFFFFFFFF).errorDescription(), "Argon2: desteklenmeyen sürüm 0xffffffff.");
    EXPECT_EQ(Error::unsupportedVersion(0).errorDescription(), "Argon2: desteklenmeyen sürüm 0x0.");
    EXPECT_EQ(Error::allocationFailed().errorDescription(), "Argon2: bellek ayrılamadı.");
}

TEST(Argon2ErrorTest, saysItsCaseAndEqualsOnlyItsLike) {
    const auto error = Argon2::Error::invalidMemory(31);
    EXPECT_EQ(std::get<Argon2::Error::InvalidMemory>(error.failure()).value, 31U);
    EXPECT_EQ(error.what(), error.errorDescription());
    EXPECT_TRUE(error == Argon2::Error::invalidMemory(31));
    EXPECT_FALSE(error == Argon2::Error::invalidMemory(30));
    EXPECT_FALSE(error == Argon2::Error::invalidParallelism(31));
}

// Each row repairs the fault of the row above, so that the next check is the first that fails.
TEST(Argon2CheckTest, reportsTheFirstFaultInTheOrderOfTheChecks) {
    Arguments arguments{.salt = Bytes(7, 0),
                        .cost = {.memoryKiB = 7, .iterations = 0, .parallelism = 0},
                        .outputLength = 3,
                        .version = 0x12};
    EXPECT_EQ(arguments.failure(), "Argon2: desteklenmeyen sürüm 0x12.");
    arguments.version = 0x13;
    EXPECT_EQ(arguments.failure(), "Argon2: geçersiz paralellik değeri 0.");
    arguments.cost.parallelism = 1;
    EXPECT_EQ(arguments.failure(), "Argon2: geçersiz tur sayısı 0.");
    arguments.cost.iterations = 1;
    EXPECT_EQ(arguments.failure(), "Argon2: geçersiz çıktı uzunluğu 3.");
    arguments.outputLength = 4;
    EXPECT_EQ(arguments.failure(), "Argon2: tuz en az 8 byte olmalı (7).");
    arguments.salt = Bytes(8, 0);
    EXPECT_EQ(arguments.failure(), "Argon2: geçersiz bellek değeri 7 KiB.");
    arguments.cost.memoryKiB = 8;
    EXPECT_EQ(arguments.failure(), "");
}

TEST(Argon2CheckTest, refusesEveryVersionButTheTwo) {
    for (const std::uint32_t version : {0x0U, 0x0FU, 0x11U, 0x12U, 0x14U, 0xFFFFFFFFU})
        EXPECT_THROW(static_cast<void>(Arguments{.version = version}.hash()), Argon2::Error) << version;
}

TEST(Argon2CheckTest, refusesMoreThan24BitsOfLanes) {
    Arguments arguments{.cost = {.memoryKiB = 0xFFFFFFFF, .iterations = 1, .parallelism = 0x1000000}};
    EXPECT_EQ(arguments.failure(), "Argon2: geçersiz paralellik değeri 16777216.");
    arguments.cost = {.memoryKiB = 1, .iterations = 1, .parallelism = 0xFFFFFF};
    EXPECT_EQ(arguments.failure(), "Argon2: geçersiz bellek değeri 1 KiB.");
}

TEST(Argon2CheckTest, refusesANegativeOutputLength) {
    EXPECT_EQ(Arguments{.outputLength = -1}.failure(), "Argon2: geçersiz çıktı uzunluğu -1.");
}

TEST(Argon2CheckTest, refusesLessThan8BlocksALane) {
    Arguments arguments{.cost = {.memoryKiB = 31, .iterations = 1, .parallelism = 4}};
    EXPECT_EQ(arguments.failure(), "Argon2: geçersiz bellek değeri 31 KiB.");
    arguments.cost.memoryKiB = 32;
    EXPECT_EQ(arguments.failure(), "");
}

TEST(Argon2MemoryTest, failsWhereTheMemoryIsNotToBeHad) {
    Arguments arguments{.cost = {.memoryKiB = 0xFFFFFFFF, .iterations = 1, .parallelism = 1}};
    EXPECT_EQ(arguments.failure(), "Argon2: bellek ayrılamadı.");
    arguments.cost.parallelism = 0xFFFFFF;
    EXPECT_EQ(arguments.failure(), "Argon2: bellek ayrılamadı.");
}

/// Ends the process with 0 where 1 GiB is refused to a process that may map only 64 MiB more.
[[noreturn]] void hashWithLittleAddressSpace() {
    std::uint64_t mappedPages = 0;
    std::ifstream("/proc/self/statm") >> mappedPages;
    const rlim_t most = mappedPages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)) + (rlim_t{64} << 20);
    const rlimit limit{.rlim_cur = most, .rlim_max = most};
    setrlimit(RLIMIT_AS, &limit);
    const Arguments arguments{.cost = {.memoryKiB = 1 << 20, .iterations = 1, .parallelism = 1}};
    std::_Exit(arguments.failure() == "Argon2: bellek ayrılamadı." ? 0 : 1);
}

TEST(Argon2DeathTest, failsWhereTheProcessMayNotMapAsMuch) {
    ASSERT_GT(availableMemory(), std::uint64_t{1} << 30);
    EXPECT_EXIT(hashWithLittleAddressSpace(), testing::ExitedWithCode(0), "");
}

TEST(Argon2MemoryTest, beginsWithZeros) {
    const Argon2::WorkingArea area(4096);
    for (const std::uint64_t block : {0, 2047, 4095})
        for (std::uint32_t word = 0; word < 128; ++word)
            ASSERT_EQ(area.words()[block * Argon2::wordsPerBlock + word], 0U);
}

TEST(Argon2MemoryTest, isAlignedForHugePagesWhereItIsAsLargeAsOne) {
    const Argon2::WorkingArea area(2048);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(area.words()) % (2 << 20), 0U);
}

/// The flags that the kernel keeps of the mapping that an address is in.
std::string mappingFlags(const void* address) {
    std::ifstream stream("/proc/self/smaps");
    bool inside = false;
    for (std::string line; std::getline(stream, line);) {
        unsigned long long begin = 0;
        unsigned long long end = 0;
        if (std::sscanf(line.c_str(), "%llx-%llx ", &begin, &end) == 2)
            inside =
                reinterpret_cast<std::uintptr_t>(address) >= begin && reinterpret_cast<std::uintptr_t>(address) < end;
        else if (inside && line.starts_with("VmFlags:"))
            return line + ' ';
    }
    return "none";
}

TEST(Argon2MemoryTest, isLeftOutOfDumps) {
    const Argon2::WorkingArea area(4096);
    EXPECT_THAT(mappingFlags(area.words()), testing::HasSubstr(" dd "));
}

TEST(Argon2MemoryTest, wipesTheBlocksThatItIsGivenAndNoOther) {
    const Argon2::WorkingArea area(16);
    std::fill_n(area.words(), 16 * 128, ~std::uint64_t{0});

    Argon2::wipeBlocks(area.words() + Argon2::wordsPerBlock, 14);

    for (std::uint64_t block = 0; block < 16; ++block)
        for (std::uint32_t word = 0; word < 128; ++word)
            ASSERT_EQ(area.words()[block * Argon2::wordsPerBlock + word],
                      block == 0 || block == 15 ? ~std::uint64_t{0} : 0)
                << block;
}

TEST(Argon2DeathTest, stopsAtAnOutputLengthBeyond32Bits) {
    EXPECT_DEATH(static_cast<void>(Arguments{.outputLength = std::int64_t{1} << 32}.hash()), "precondition");
}

TEST(Argon2DeathTest, stopsAtAnInputLengthBeyond32Bits) {
    // The length is looked at before the bytes are, so there need be none.
    const Bytes byte(1, 0);
    const ByteView tooLong(byte.data(), std::size_t{1} << 32);
    const auto salt = bytesOf("tuz ve biber");
    const Argon2::Cost cost{.memoryKiB = 8, .iterations = 1, .parallelism = 1};
    for (const auto& input :
         {Argon2::Input{.password = tooLong, .salt = salt}, Argon2::Input{.password = salt, .salt = tooLong},
          Argon2::Input{.password = salt, .salt = salt, .secret = tooLong},
          Argon2::Input{.password = salt, .salt = salt, .associatedData = tooLong}})
        EXPECT_DEATH(static_cast<void>(Argon2::hash(input, cost, 32, Variant::id)), "precondition");
}

}  // namespace
