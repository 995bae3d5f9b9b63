// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <endian.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

/// Texts by their keys. They are sorted word by word: keys that share a beginning are ordered by what follows it,
/// and their bytes are read once, in a row.
class KeyedTexts {
public:
    /// Room for so many keys that are as long as their texts together, or a little longer, is made at once.
    explicit KeyedTexts(std::size_t expected = 0, std::size_t expectedBytes = 0) {
        m_keys.reserve(expected);
        m_bytes.reserve(expectedBytes + 2 * wordSize * expected);
    }

    /// Room for a key of this size behind those that are there.
    std::uint8_t* room(std::size_t size) {
        const auto needed = m_end + size + wordSize;
        if (m_bytes.capacity() < needed) {
            m_bytes.resize(m_end);
            m_bytes.reserve(2 * needed);
        }
        m_bytes.resize(needed);
        return m_bytes.data() + m_end;
    }

    /// Keeps the key that was written into the room. It has no zero but perhaps a last one, and gets zeros up to the
    /// end of its last word, one at least.
    void add(std::uint32_t index, std::size_t size) {
        m_keys.push_back({.word = 0, .rest = static_cast<std::uint32_t>(m_end / wordSize), .index = index});
        std::memset(m_bytes.data() + m_end + size, 0, wordSize);
        m_end += size / wordSize * wordSize + wordSize;
    }

    /// The indices by their keys, those of equal keys by what `compare` says of two of them, and then as they came.
    /// `fetch` is called with each index that will be compared.
    template <class Compare, class Fetch>
    std::vector<std::uint32_t> order(Compare compare, Fetch fetch) {
        std::vector<std::span<Key>> waiting{m_keys};
        while (!waiting.empty()) {
            const auto keys = waiting.back();
            waiting.pop_back();
            readWords(keys);
            std::ranges::sort(keys, {}, &Key::word);
            for (auto run = equalWordsAt(keys.begin(), keys); !run.empty(); run = equalWordsAt(run.end(), keys)) {
                if (run.size() > 1 && endsIn(run.front().word))
                    settle(run, compare, fetch);
                else if (run.size() > 1)
                    waiting.push_back(run);
            }
        }
        std::vector<std::uint32_t> indices(m_keys.size());
        std::ranges::transform(m_keys, indices.begin(), &Key::index);
        return indices;
    }

private:
    struct Key {
        std::uint64_t word;  // what is compared now
        std::uint32_t rest;  // the word in m_bytes where it goes on; half the size makes a sort a fifth faster
        std::uint32_t index;
    };

    static constexpr std::size_t wordSize = sizeof(Key::word);

    // What is read so many steps later is fetched now, where it lies scattered: to wait for each takes longer than to
    // read it.
    static constexpr std::size_t ahead = 16;

    static bool endsIn(std::uint64_t word) { return (word & 0xff) == 0; }

    [[nodiscard]] const std::uint8_t* wordAt(const Key& key) const { return m_bytes.data() + key.rest * wordSize; }

    void readWords(std::span<Key> keys) const {
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if (i + ahead < keys.size())
                __builtin_prefetch(wordAt(keys[i + ahead]));
            readWord(keys[i]);
        }
    }

    void readWord(Key& key) const {
        std::memcpy(&key.word, wordAt(key), wordSize);
        key.word = be64toh(key.word);
        ++key.rest;
    }

    static std::span<Key> equalWordsAt(std::span<Key>::iterator begin, std::span<Key> keys) {
        const auto differs = [&](const Key& key) { return key.word != begin->word; };
        return {begin, std::find_if(begin, keys.end(), differs)};
    }

    template <class Compare, class Fetch>
    static void settle(std::span<Key> keys, Compare compare, Fetch fetch) {
        for (const auto& key : keys)
            fetch(key.index);
        const auto less = [&](std::uint32_t a, std::uint32_t b) { return compare(a, b) < 0; };
        std::ranges::sort(keys, {}, &Key::index);
        if (!std::ranges::is_sorted(keys, less, &Key::index))
            std::ranges::stable_sort(keys, less, &Key::index);
    }

    std::vector<Key> m_keys;
    Bytes m_bytes;
    std::size_t m_end = 0;  // of the keys in m_bytes
};
