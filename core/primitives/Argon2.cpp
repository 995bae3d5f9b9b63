// SPDX-License-Identifier: MIT
#include "core/primitives/Argon2.h"

#include "core/primitives/Argon2Memory.h"
#include "core/primitives/Argon2Segment.h"
#include "core/primitives/Argon2Team.h"
#include "core/primitives/Blake2b.h"
#include "core/primitives/Hexadecimal.h"
#include "core/primitives/LittleEndian.h"
#include "core/primitives/Overloaded.h"
#include "core/primitives/Precondition.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <limits>
#include <new>

namespace Argon2 {
namespace {

constexpr std::uint32_t mostLanes = 0xFFFFFF;
constexpr std::int64_t shortestOutput = 4;
constexpr std::size_t shortestSalt = 8;
constexpr std::uint32_t leastBlocksPerLane = 8;
constexpr auto longestField = std::numeric_limits<std::uint32_t>::max();

/// What H0 is made of.
struct Parameters {
    const Input& input;
    const Cost& cost;
    std::int64_t outputLength;
    Variant variant;
    std::uint32_t version;
};

void check(const Parameters& parameters) {
    const auto& [input, cost, outputLength, variant, version] = parameters;
    if (version != version13 && version != version10)
        throw Error::unsupportedVersion(version);
    if (cost.parallelism < 1 || cost.parallelism > mostLanes)
        throw Error::invalidParallelism(cost.parallelism);
    if (cost.iterations == 0)
        throw Error::invalidIterations(cost.iterations);
    if (outputLength < shortestOutput)
        throw Error::invalidOutputLength(outputLength);
    if (input.salt.size() < shortestSalt)
        throw Error::invalidSaltLength(static_cast<std::int64_t>(input.salt.size()));
    if (cost.memoryKiB < leastBlocksPerLane * cost.parallelism)
        throw Error::invalidMemory(cost.memoryKiB);
    // Callers ask for a key's length, and their inputs are hashes and what a header holds, far below 4 GiB.
    precondition(outputLength <= longestField);
    for (const auto field : {input.password, input.salt, input.secret, input.associatedData})
        precondition(field.size() <= longestField);
}

/// H0 (RFC 9106, section 3.2, step 1).
Bytes firstHash(const Parameters& parameters) {
    const auto& [input, cost, outputLength, variant, version] = parameters;
    Blake2b::State state(64);
    const auto number = [&state](std::uint64_t value) {
        std::array<std::uint8_t, 4> bytes;
        storeLE(bytes.data(), static_cast<std::uint32_t>(value));
        state.update(bytes);
    };
    number(cost.parallelism);
    number(static_cast<std::uint64_t>(outputLength));
    number(cost.memoryKiB);  // as the caller gave it, not as it is rounded
    number(cost.iterations);
    number(version);
    number(static_cast<std::uint32_t>(variant));
    for (const auto field : {input.password, input.salt, input.secret, input.associatedData}) {
        number(field.size());
        state.update(field);
    }
    return state.finalize();
}

SegmentContext derivedSizes(const Parameters& parameters, std::uint64_t* memory = nullptr) {
    const auto lanes = parameters.cost.parallelism;
    const auto segmentLength = parameters.cost.memoryKiB / (syncPoints * lanes);
    const auto laneLength = segmentLength * syncPoints;
    return {.memory = memory,
            .pass = 0,
            .slice = 0,
            .lanes = lanes,
            .laneLength = laneLength,
            .segmentLength = segmentLength,
            .memoryBlocks = laneLength * lanes,
            .iterations = parameters.cost.iterations,
            .variant = parameters.variant,
            .version = parameters.version};
}

/// The first two blocks of each lane (steps 3 and 4).
void storeFirstBlocks(const SegmentContext& context, ByteView h0) {
    Bytes seed = copyOf(h0);
    seed.resize(h0.size() + 8);
    for (std::uint32_t lane = 0; lane < context.lanes; ++lane)
        for (std::uint32_t i = 0; i < 2; ++i) {
            storeLE(seed.data() + h0.size(), i);
            storeLE(seed.data() + h0.size() + 4, lane);
            const auto block = Blake2b::longHash(seed, bytesPerBlock);
            const auto index = std::uint64_t{lane} * context.laneLength + i;
            std::memcpy(context.memory + index * wordsPerBlock, block.data(), bytesPerBlock);
        }
}

/// What a thread fills before it looks up: a few milliseconds' work, of as many lanes as are filled in turn and more.
constexpr std::uint32_t lanesInPart = 64;
constexpr std::uint32_t blocksInPart = 4096;

/// The passes over all lanes, which a team of threads walks together, slice by slice.
class Passes {
public:
    Passes(const SegmentContext& context, FillSegments fillSegments, Derivation* derivation) noexcept
        : m_context(context), m_fillSegments(fillSegments), m_derivation(derivation) {
        if (m_derivation)
            m_derivation->begin(std::uint64_t{context.iterations} * context.memoryBlocks);
    }

    /// All passes over some of the lanes, and the wipe of all their blocks but the last ones (steps 5 and 6).
    void fill(LaneRange lanes, const std::function<void()>& meet) noexcept {
        auto context = m_context;
        for (context.pass = 0; context.pass < context.iterations; ++context.pass)
            for (context.slice = 0; context.slice < syncPoints; ++context.slice) {
                fillSlice(context, lanes);
                meet();
                if (isCutShort(context))
                    return wipe(lanes,
                                context.pass == 0 ? (context.slice + 1) * context.segmentLength : context.laneLength);
            }
        wipe(lanes, context.laneLength - 1);
    }

    [[nodiscard]] bool isCutShort() const noexcept { return m_lastSlice.load() != none; }

private:
    static constexpr auto none = std::numeric_limits<std::uint64_t>::max();

    static std::uint64_t numberOf(const SegmentContext& context) noexcept {
        return std::uint64_t{context.pass} * syncPoints + context.slice;
    }

    void fillSlice(SegmentContext context, LaneRange lanes) noexcept {
        if (!m_derivation)
            return m_fillSegments(context, lanes);
        for (std::uint32_t done = 0; done < lanes.count; done += lanesInPart) {
            const LaneRange some{lanes.first + done, std::min(lanesInPart, lanes.count - done)};
            for (std::uint32_t begin = 0; begin < context.segmentLength; begin = context.partEnd) {
                if (m_derivation->isGivenUp())
                    return cutShort(context);
                context.partBegin = begin;
                context.partEnd = begin + std::min(blocksInPart, context.segmentLength - begin);
                m_fillSegments(context, some);
                m_derivation->advance(std::uint64_t{some.count} * (context.partEnd - begin));
            }
        }
    }

    /// The first thread that gives up says after which slice all of them end. Another may be a slice behind, and must
    /// still come to the meeting in between.
    void cutShort(const SegmentContext& context) noexcept {
        auto expected = none;
        m_lastSlice.compare_exchange_strong(expected, numberOf(context));
    }

    [[nodiscard]] bool isCutShort(const SegmentContext& context) const noexcept {
        return m_lastSlice.load() <= numberOf(context);
    }

    /// The first blocks of each lane.
    void wipe(LaneRange lanes, std::uint32_t blocks) const noexcept {
        for (auto lane = lanes.first; lane < lanes.first + lanes.count; ++lane)
            wipeBlocks(m_context.memory + std::uint64_t{lane} * m_context.laneLength * wordsPerBlock, blocks);
    }

    SegmentContext m_context;
    FillSegments m_fillSegments;
    Derivation* m_derivation;
    std::atomic<std::uint64_t> m_lastSlice = none;  // the number of the one after which a hash that was given up ends
};

/// The XOR of the last blocks, which are wiped with it (step 7).
Bytes takeLastBlocks(const SegmentContext& context) {
    Bytes accumulator(bytesPerBlock, 0);
    for (std::uint64_t lane = 1; lane <= context.lanes; ++lane) {
        auto* const block = context.memory + (lane * context.laneLength - 1) * wordsPerBlock;
        for (std::uint32_t i = 0; i < wordsPerBlock; ++i) {
            auto* const word = accumulator.data() + i * sizeof *block;
            storeLE(word, loadLE<std::uint64_t>(word) ^ block[i]);
        }
        wipeBlocks(block, 1);
    }
    return accumulator;
}

Bytes hashChecked(const Parameters& parameters, Implementation implementation, Derivation* derivation) {
    const WorkingArea area(derivedSizes(parameters).memoryBlocks);
    const auto context = derivedSizes(parameters, area.words());
    storeFirstBlocks(context, firstHash(parameters));
    Passes passes(context, fillSegmentsFor(implementation), derivation);
    shareLanes(context.lanes, [&](LaneRange lanes, const std::function<void()>& meet) { passes.fill(lanes, meet); });
    if (passes.isCutShort())
        throw DerivationGivenUp();
    return Blake2b::longHash(takeLastBlocks(context), parameters.outputLength);
}

}  // namespace

std::string ErrorCases::describe(const Case& failure) {
    using namespace std::string_literals;
    return std::visit(
        Overloaded{
            [](const InvalidParallelism& e) {
                return "Argon2: geçersiz paralellik değeri " + std::to_string(e.value) + ".";
            },
            [](const InvalidMemory& e) {
                return "Argon2: geçersiz bellek değeri " + std::to_string(e.value) + " KiB.";
            },
            [](const InvalidIterations& e) { return "Argon2: geçersiz tur sayısı " + std::to_string(e.value) + "."; },
            [](const InvalidOutputLength& e) {
                return "Argon2: geçersiz çıktı uzunluğu " + std::to_string(e.value) + ".";
            },
            [](const InvalidSaltLength& e) {
                return "Argon2: tuz en az 8 byte olmalı (" + std::to_string(e.value) + ").";
            },
            [](const UnsupportedVersion& e) {
                return "Argon2: desteklenmeyen sürüm 0x" + hexadecimalNumber(e.value) + ".";
            },
            [](const AllocationFailed&) { return "Argon2: bellek ayrılamadı."s; },
        },
        failure);
}

FillSegments fillSegmentsFor([[maybe_unused]] Implementation implementation) noexcept {
#ifdef __x86_64__
    if (implementation == Implementation::avx512)
        return fillSegmentsAvx512;
    if (implementation == Implementation::avx2)
        return fillSegmentsAvx2;
#endif
    return fillSegmentsPortable;
}

Bytes hash(const Input& input, const Cost& cost, std::int64_t outputLength, Variant variant, std::uint32_t version,
           Derivation* derivation) {
    return hashOn(widestVectors(), input, cost, outputLength, variant, version, derivation);
}

Bytes hashOn(Implementation implementation, const Input& input, const Cost& cost, std::int64_t outputLength,
             Variant variant, std::uint32_t version, Derivation* derivation) {
    precondition(isSupported(implementation));  // widestVectors has asked the processor
    const Parameters parameters{input, cost, outputLength, variant, version};
    check(parameters);
    try {
        return hashChecked(parameters, implementation, derivation);
    } catch (const std::bad_alloc&) {
        throw Error::allocationFailed();
    }
}

}  // namespace Argon2
