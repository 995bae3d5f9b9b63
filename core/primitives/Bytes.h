// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

/// Overwrites `size` bytes at `data` with zeros, in a way that the compiler may not drop.
void secureWipe(void* data, std::size_t size) noexcept;

/// Overwrites the stack that the calls before this one have left behind: registers with round keys or keystream go
/// there when a function has more values than registers, and no name reaches them any more.
void wipeUnusedStack() noexcept;

/// An allocator whose memory is overwritten with zeros before it goes back, growing included.
/// Elements that are given no value are left unset, so that a buffer about to be filled is not filled twice.
template <class T>
class WipingAllocator {
public:
    using value_type = T;

    WipingAllocator() noexcept = default;
    template <class U>
    explicit WipingAllocator(const WipingAllocator<U>&) noexcept {}

    [[nodiscard]] T* allocate(std::size_t count) { return std::allocator<T>().allocate(count); }
    void deallocate(T* memory, std::size_t count) noexcept {
        secureWipe(memory, count * sizeof(T));
        std::allocator<T>().deallocate(memory, count);
    }

    template <class U>
    void construct(U* address) noexcept {
        ::new (static_cast<void*>(address)) U;
    }
    template <class U, class... Arguments>
    void construct(U* address, Arguments&&... arguments) {
        ::new (static_cast<void*>(address)) U(std::forward<Arguments>(arguments)...);
    }

    friend bool operator==(const WipingAllocator&, const WipingAllocator&) noexcept { return true; }
};

/// A byte buffer that may hold a key or plaintext: it is wiped on release.
/// `Bytes(n)` and `resize(n)` leave new bytes unset; `Bytes(n, 0)` fills them.
using Bytes = std::vector<std::uint8_t, WipingAllocator<std::uint8_t>>;

/// Bytes that are borrowed from their owner.
using ByteView = std::span<const std::uint8_t>;

/// Whether both are the same, in a time that depends on their sizes alone.
[[nodiscard]] bool constantTimeEquals(ByteView a, ByteView b) noexcept;

/// The bytes of a text, borrowed.
[[nodiscard]] inline ByteView bytesOf(std::string_view text) noexcept {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// The text that some bytes are, borrowed and unchecked.
[[nodiscard]] inline std::string_view textOf(ByteView bytes) noexcept {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// A copy of borrowed bytes.
[[nodiscard]] inline Bytes copyOf(ByteView bytes) {
    return {bytes.begin(), bytes.end()};
}

/// Appends borrowed bytes to a buffer.
inline void append(Bytes& buffer, ByteView bytes) {
    buffer.insert(buffer.end(), bytes.begin(), bytes.end());
}
