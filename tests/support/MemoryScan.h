// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"
#include "core/primitives/Random.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

/// Whether a scan says something: a sanitizer keeps what is freed.
#if defined(__SANITIZE_ADDRESS__)
#define BRENVIK_MEMORY_IS_SCANNABLE false  // what is freed is kept for a while, among terabytes of its own
#else
#define BRENVIK_MEMORY_IS_SCANNABLE true
#endif

/// A secret that a test knows and does not hold: its bytes lie masked, and are put together one at a time.
class MaskedSecret {
public:
    /// Random letters, digits and signs, so many that no memory holds them by chance.
    static MaskedSecret text() {
        MaskedSecret secret(length);
        const auto choices = randomBytes(length);
        for (std::size_t i = 0; i < length; ++i)
            secret.m_masked[i] = static_cast<std::uint8_t>(alphabet[choices[i] % alphabet.size()]) ^ secret.m_pad[i];
        return secret;
    }
    static MaskedSecret of(ByteView bytes) {
        MaskedSecret secret(bytes.size());
        for (std::size_t i = 0; i < bytes.size(); ++i)
            secret.m_masked[i] = bytes[i] ^ secret.m_pad[i];
        return secret;
    }

    [[nodiscard]] std::size_t size() const { return m_masked.size(); }
    [[nodiscard]] std::uint8_t at(std::size_t index) const { return m_masked[index] ^ m_pad[index]; }

    /// The secret in the clear, in one place: whoever takes it wipes it.
    [[nodiscard]] std::string clear() const {
        std::string text(size(), '\0');
        for (std::size_t i = 0; i < size(); ++i)
            text[i] = static_cast<char>(at(i));
        return text;
    }

private:
    static constexpr std::size_t length = 64;
    static constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+-";

    explicit MaskedSecret(std::size_t size) : m_masked(size), m_pad(randomBytes(size)) {}

    Bytes m_masked;
    Bytes m_pad;
};

/// All memory that this process can write to, as it is now.
class MemoryScan {
public:
    MemoryScan()
        : m_memory(::open("/proc/self/mem", O_RDONLY | O_CLOEXEC)),
          m_window(static_cast<std::uint8_t*>(
              ::mmap(nullptr, windowSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
        if (m_memory < 0 || m_window == MAP_FAILED)
            throw std::runtime_error("the process cannot read its own memory");
    }
    ~MemoryScan() {
        ::munmap(m_window, windowSize);
        ::close(m_memory);
    }
    MemoryScan(const MemoryScan&) = delete;
    MemoryScan& operator=(const MemoryScan&) = delete;

    /// How often the end of the secret lies somewhere. What was freed unwiped has lost its beginning to the allocator,
    /// and the end is long enough to be nowhere by chance.
    [[nodiscard]] int occurrences(const MaskedSecret& secret) {
        int count = 0;
        std::ifstream maps("/proc/self/maps");
        for (std::string line; std::getline(maps, line);) {
            std::uint64_t begin = 0;
            std::uint64_t end = 0;
            std::array<char, 5> rights{};
            if (std::sscanf(line.c_str(), "%lx-%lx %4s", &begin, &end, rights.data()) == 3 &&
                std::string_view(rights.data()).starts_with("rw"))
                count += occurrences(secret, begin, end);
        }
        return count;
    }

private:
    static constexpr std::size_t windowSize = 1 << 20;
    static constexpr std::size_t endLength = 12;

    static std::uint8_t endAt(const MaskedSecret& secret, std::size_t index) {
        return secret.at(secret.size() - endLength + index);
    }

    // The window shows what the rest of the memory holds, so it does not look at itself.
    int occurrences(const MaskedSecret& secret, std::uint64_t begin, std::uint64_t end) {
        const auto window = reinterpret_cast<std::uint64_t>(m_window);
        if (window >= begin && window < end)
            return occurrences(secret, begin, window) + occurrences(secret, window + windowSize, end);
        int count = 0;
        for (auto place = begin; place + endLength <= end; place += windowSize - endLength + 1) {
            const auto size = ::pread(m_memory, m_window, std::min<std::uint64_t>(windowSize, end - place),
                                      static_cast<off_t>(place));
            if (size >= static_cast<ssize_t>(endLength))
                count += occurrencesInWindow(secret, static_cast<std::size_t>(size));
        }
        secureWipe(m_window, windowSize);
        return count;
    }

    int occurrencesInWindow(const MaskedSecret& secret, std::size_t size) const {
        int count = 0;
        const auto* const last = m_window + size - endLength;
        for (const auto* place = m_window; place <= last; ++place) {
            place = static_cast<const std::uint8_t*>(
                std::memchr(place, endAt(secret, 0), static_cast<std::size_t>(last - place) + 1));
            if (!place)
                break;
            std::size_t equal = 1;
            while (equal < endLength && place[equal] == endAt(secret, equal))
                ++equal;
            count += equal == endLength ? 1 : 0;
        }
        return count;
    }

    int m_memory;
    std::uint8_t* m_window;
};
