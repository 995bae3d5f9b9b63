// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

/// A text that grows at its end and leaves no copy of itself behind: documents hold secrets in the clear.
class WipingText {
public:
    void append(std::string_view text) { std::copy(text.begin(), text.end(), room(text.size()).begin()); }

    /// So many bytes more, for the caller to fill.
    [[nodiscard]] std::span<std::uint8_t> room(std::size_t count) {
        if (count > m_buffer.size() - m_size)
            grow(count);
        const auto added = std::span(m_buffer).subspan(m_size, count);
        m_size += count;
        return added;
    }

    /// Keeps its memory for the next text.
    void clear() noexcept { m_size = 0; }

    [[nodiscard]] bool empty() const noexcept { return m_size == 0; }
    [[nodiscard]] ByteView bytes() const noexcept { return std::span(m_buffer).first(m_size); }
    [[nodiscard]] std::span<std::uint8_t> mutableBytes() noexcept { return std::span(m_buffer).first(m_size); }
    [[nodiscard]] std::string_view view() const noexcept { return textOf(bytes()); }

    [[nodiscard]] Bytes take() && {
        m_buffer.resize(std::exchange(m_size, 0));
        return std::exchange(m_buffer, {});
    }

private:
    void grow(std::size_t count) {
        Bytes larger(std::max({m_size + count, 2 * m_buffer.size(), std::size_t{64}}));
        std::copy_n(m_buffer.begin(), m_size, larger.begin());
        m_buffer.swap(larger);
    }

    Bytes m_buffer;  // its size is the room there is
    std::size_t m_size = 0;
};
