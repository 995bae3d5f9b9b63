// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Argon2.h"
#include "core/primitives/Implementation.h"

#include <cstdint>

/// The filling of segments (RFC 9106, section 3.4), in each implementation.
namespace Argon2 {

inline constexpr std::uint32_t wordsPerBlock = 128;
inline constexpr std::uint32_t bytesPerBlock = 1024;
inline constexpr std::uint32_t syncPoints = 4;
inline constexpr std::uint32_t addressesPerBlock = 128;

inline constexpr std::uint32_t version10 = 0x10;
inline constexpr std::uint32_t version13 = 0x13;

/// One slice of one pass. The working area belongs to the caller.
struct SegmentContext {
    std::uint64_t* memory;  // first word of the working area, where a cache line begins
    std::uint32_t pass;
    std::uint32_t slice;
    std::uint32_t lanes;
    std::uint32_t laneLength;
    std::uint32_t segmentLength;
    std::uint32_t memoryBlocks;
    std::uint32_t iterations;
    Variant variant;
    std::uint32_t version;
    // The part of each segment that is to be filled, for one who looks up now and then. It begins at a multiple of
    // `addressesPerBlock`, and is all of the segment at first.
    std::uint32_t partBegin = 0;
    std::uint32_t partEnd = ~std::uint32_t{0};
};

/// Lanes that lie side by side.
struct LaneRange {
    std::uint32_t first;
    std::uint32_t count;
};

/// Fills the part of the slice's segment of each lane of the range.
using FillSegments = void (*)(const SegmentContext&, LaneRange) noexcept;

void fillSegmentsPortable(const SegmentContext& context, LaneRange lanes) noexcept;
#ifdef __x86_64__
void fillSegmentsAvx2(const SegmentContext& context, LaneRange lanes) noexcept;
void fillSegmentsAvx512(const SegmentContext& context, LaneRange lanes) noexcept;
#endif

/// The function of a supported implementation.
[[nodiscard]] FillSegments fillSegmentsFor(Implementation implementation) noexcept;

/// `hash`, by an implementation of the caller's choice. That the processor supports it is a precondition.
[[nodiscard]] Bytes hashOn(Implementation implementation, const Input& input, const Cost& cost,
                           std::int64_t outputLength, Variant variant, std::uint32_t version,
                           Derivation* derivation = nullptr);

}  // namespace Argon2
