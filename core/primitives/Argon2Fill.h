// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Argon2Segment.h"

/// The filling of segments over any compression function: what the implementations share.
///
/// Their sources are compiled for processors that may not be this one. So this header uses no inline function of the
/// library, whose copy the linker could keep for the whole program, and each source instantiates it with a type of its
/// own alone.
namespace Argon2 {

/// What becomes of a block's old content.
enum class Old : std::uint8_t { overwritten, mixedIn };

/// A thread fills its lanes block by block in turn: while the reference block of one lane is on its way from memory,
/// the others are computed. More lanes at once would push each other's blocks out of the first cache.
inline constexpr std::uint32_t lanesInTurn = 4;

/// How many blocks ahead addresses that do not depend on data are looked up.
inline constexpr std::uint32_t lookAhead = 2;

[[gnu::always_inline]] inline void prefetchBlock(const std::uint64_t* block) noexcept {
    constexpr std::uint32_t wordsPerCacheLine = 8;
    for (std::uint32_t word = 0; word < wordsPerBlock; word += wordsPerCacheLine)
        __builtin_prefetch(block + word);
}

/// One lane's segment of one slice, or a part of it, filled block by block.
///
/// `Compression::compress<old>(previous, reference, next, announce)` computes a block from two others, of which
/// `reference` may be `next` itself, and calls `announce` with its first word as soon as that is known, which is before
/// the rest.
template <class Compression>
class SegmentFill {
public:
    void start(const SegmentContext& context, std::uint32_t lane) noexcept {
        m_context = context;
        m_lane = lane;
        m_area = findArea(context);
        m_old = context.version == version13 && context.pass > 0 ? Old::mixedIn : Old::overwritten;
        const auto first = firstIndex(context);
        const auto position = context.slice * context.segmentLength + first;
        m_next = block(lane, position);
        m_previous = block(lane, (position == 0 ? context.laneLength : position) - 1);
        if (isDataIndependent(context))
            startAddresses(first);
        else if (first < endIndex(context))
            m_reference = reference(*m_previous, first);
    }

    /// Two blocks of each lane are there before the first slice.
    [[nodiscard]] static std::uint32_t firstIndex(const SegmentContext& context) noexcept {
        return context.partBegin == 0 && context.pass == 0 && context.slice == 0 ? 2 : context.partBegin;
    }

    [[nodiscard]] static std::uint32_t endIndex(const SegmentContext& context) noexcept {
        return context.partEnd < context.segmentLength ? context.partEnd : context.segmentLength;
    }

    [[nodiscard]] static bool isDataIndependent(const SegmentContext& context) noexcept {
        return context.variant == Variant::i ||
               (context.variant == Variant::id && context.pass == 0 && context.slice < syncPoints / 2);
    }

    void fillByAddress(std::uint32_t index) noexcept {
        const auto number = index % addressesPerBlock;
        if (number == 0 && index > 0)
            nextAddresses();
        if (number + lookAhead < addressesPerBlock && index + lookAhead < m_context.segmentLength)
            prefetchBlock(reference(m_addresses[number + lookAhead], index + lookAhead));
        compress(reference(m_addresses[number], index), AddressesAreKnown{});
    }

    void fillByData(std::uint32_t index) noexcept { compress(m_reference, ReferenceToCome{*this, index + 1}); }

private:
    struct AddressesAreKnown {
        void operator()(std::uint64_t) const noexcept {}
    };

    /// Sends for the block that the next one refers to, while the present one is still computed.
    struct ReferenceToCome {
        SegmentFill& fill;
        std::uint32_t index;

        [[gnu::always_inline]] void operator()(std::uint64_t firstWord) const noexcept {
            if (index == fill.m_context.segmentLength)
                return;
            fill.m_reference = fill.reference(firstWord, index);
            prefetchBlock(fill.m_reference);
        }
    };

    /// The blocks of a lane that may be referred to, but for what the index within the segment adds.
    struct Area {
        std::uint32_t start;
        std::uint32_t size;
    };

    [[nodiscard]] static Area findArea(const SegmentContext& context) noexcept {
        const auto filled = context.slice * context.segmentLength;
        if (context.pass == 0)
            return {0, filled};
        return {context.slice + 1 == syncPoints ? 0 : filled + context.segmentLength,
                context.laneLength - context.segmentLength};
    }

    [[nodiscard]] std::uint64_t* block(std::uint32_t lane, std::uint32_t index) const noexcept {
        return m_context.memory + (std::uint64_t{lane} * m_context.laneLength + index) * wordsPerBlock;
    }

    /// The block that a pseudo-random word refers to (RFC 9106, section 3.4.2).
    [[gnu::always_inline]] [[nodiscard]] const std::uint64_t* reference(std::uint64_t word,
                                                                        std::uint32_t index) const noexcept {
        const auto j1 = word & 0xFFFFFFFF;
        const auto j2 = static_cast<std::uint32_t>(word >> 32);
        const bool withinLane = m_context.lanes == 1 || (m_context.pass == 0 && m_context.slice == 0);
        const auto lane = withinLane ? m_lane : j2 % m_context.lanes;
        const std::uint32_t besides = lane == m_lane ? index - 1 : index == 0 ? ~std::uint32_t{0} : 0;
        const std::uint64_t size = m_area.size + besides;
        const auto x = (j1 * j1) >> 32;
        const auto y = (size * x) >> 32;
        auto position = m_area.start + size - 1 - y;
        if (position >= m_context.laneLength)
            position -= m_context.laneLength;
        return block(lane, static_cast<std::uint32_t>(position));
    }

    void startAddresses(std::uint32_t first) noexcept {
        for (std::uint32_t word = 0; word < wordsPerBlock; ++word)
            m_zero[word] = m_input[word] = 0;
        m_input[0] = m_context.pass;
        m_input[1] = m_lane;
        m_input[2] = m_context.slice;
        m_input[3] = m_context.memoryBlocks;
        m_input[4] = m_context.iterations;
        m_input[5] = static_cast<std::uint32_t>(m_context.variant);
        m_input[6] = first / addressesPerBlock;
        if (m_input[6] == 0)  // the addresses of a later part come when its first block is filled
            nextAddresses();
    }

    [[gnu::noinline]] void nextAddresses() noexcept {
        ++m_input[6];
        Compression::template compress<Old::overwritten>(m_zero, m_input, m_addresses, AddressesAreKnown{});
        Compression::template compress<Old::overwritten>(m_zero, m_addresses, m_addresses, AddressesAreKnown{});
    }

    template <class Announce>
    [[gnu::always_inline]] void compress(const std::uint64_t* reference, const Announce& announce) noexcept {
        if (m_old == Old::mixedIn)
            Compression::template compress<Old::mixedIn>(m_previous, reference, m_next, announce);
        else
            Compression::template compress<Old::overwritten>(m_previous, reference, m_next, announce);
        m_previous = m_next;
        m_next += wordsPerBlock;
    }

    SegmentContext m_context;
    std::uint32_t m_lane;
    Area m_area;
    Old m_old;
    const std::uint64_t* m_previous;
    const std::uint64_t* m_reference;  // of the next block, where the data names it
    std::uint64_t* m_next;
    alignas(64) std::uint64_t m_addresses[addressesPerBlock];
    alignas(64) std::uint64_t m_input[wordsPerBlock];
    alignas(64) std::uint64_t m_zero[wordsPerBlock];
};

template <class Compression>
void fillInTurn(const SegmentContext& context, LaneRange lanes) noexcept {
    using Fill = SegmentFill<Compression>;
    Fill fills[lanesInTurn];
    for (std::uint32_t i = 0; i < lanes.count; ++i)
        fills[i].start(context, lanes.first + i);
    const auto first = Fill::firstIndex(context);
    const auto end = Fill::endIndex(context);
    if (Fill::isDataIndependent(context)) {
        for (auto index = first; index < end; ++index)
            for (std::uint32_t i = 0; i < lanes.count; ++i)
                fills[i].fillByAddress(index);
    } else {
        for (auto index = first; index < end; ++index)
            for (std::uint32_t i = 0; i < lanes.count; ++i)
                fills[i].fillByData(index);
    }
}

/// Fills the segments of all lanes of the range, in groups as even as can be.
template <class Compression>
void fillSegments(const SegmentContext& context, LaneRange lanes) noexcept {
    for (auto groups = (lanes.count + lanesInTurn - 1) / lanesInTurn; groups > 0; --groups) {
        const LaneRange group{lanes.first, (lanes.count + groups - 1) / groups};
        fillInTurn<Compression>(context, group);
        lanes = {lanes.first + group.count, lanes.count - group.count};
    }
}

}  // namespace Argon2
