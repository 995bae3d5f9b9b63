// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/SharedRow.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <utility>

/// The hints in a chunk of an array: beside each element 32 bits of its id's hash, by which one is found without a look
/// into the others. An element that may be written to has no hint until it is known again, and is looked into.
/// Elements without an id have none.
///
/// Every change of a chunk's elements goes through here, so that hints and elements stay together.
template <class Node>
class ElementHints {
public:
    using Chunk = SharedRow<Node>;

    /// The chunk as the holder's alone; see `SharedRow::own`.
    static Chunk& own(SharedNode<Chunk>& holder, std::size_t extra = 0) {
        const auto wasShared = !holder.isUnique();
        auto& chunk = Chunk::own(holder, extra);
        // What was shared is not written to any more.
        for (std::size_t i = 0; wasShared && i < chunk.size(); ++i)
            if (!isKnown(chunk, i))
                remember(chunk, i);
        return chunk;
    }

    /// There must be room; see `SharedRow::insert`.
    static void insert(Chunk& chunk, std::size_t offset, SharedNode<Node> node) noexcept {
        const auto hint = hintOf(*node);
        chunk.insert(offset, std::move(node), hint);
    }

    [[nodiscard]] static bool isKnown(const Chunk& chunk, std::size_t offset) noexcept {
        return chunk.numbers()[offset] != unknown;
    }
    static void remember(Chunk& chunk, std::size_t offset) noexcept {
        chunk.numbers()[offset] = hintOf(*chunk.children()[offset]);
    }
    static void forget(Chunk& chunk, std::size_t offset) noexcept { chunk.numbers()[offset] = unknown; }

    /// The offset of the first element in the chunk that has this id.
    template <class ID>
    [[nodiscard]] static std::optional<std::size_t> offsetOf(const Chunk& chunk, const ID& id) {
        const auto hint = hintOfID(id);
        for (auto offset = nextCandidate(chunk.numbers(), 0, hint); offset;
             offset = nextCandidate(chunk.numbers(), *offset + 1, hint))
            if (chunk.children()[*offset]->element.id == id)
                return offset;
        return std::nullopt;
    }

private:
    static constexpr std::uint32_t unknown = 0;

    template <class ID>
    static std::uint32_t hintOfID(const ID& id) noexcept {
        return static_cast<std::uint32_t>(std::hash<ID>()(id)) | 1;
    }
    static std::uint32_t hintOf(const Node& node) noexcept {
        if constexpr (requires { node.element.id; })
            return hintOfID(node.element.id);
        else
            return unknown;
    }

    /// The next offset, from `start` on, whose hint is this one or unknown.
    static std::optional<std::size_t> nextCandidate(std::span<const std::uint32_t> hints, std::size_t start,
                                                    std::uint32_t hint) noexcept {
        const auto matches = [hint](std::uint32_t candidate) { return candidate == hint || candidate == unknown; };
        // Many hints at a time, without a branch for each, so that the compiler takes vector instructions.
        constexpr std::size_t stride = 32;
        while (start + stride <= hints.size()) {
            std::uint32_t anyMatches = 0;
            for (const auto candidate : hints.subspan(start).template first<stride>())
                anyMatches |= matches(candidate) ? 1 : 0;
            if (anyMatches)
                break;
            start += stride;
        }
        const auto found = std::find_if(hints.begin() + static_cast<std::ptrdiff_t>(start), hints.end(), matches);
        return found == hints.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - hints.begin()));
    }
};
