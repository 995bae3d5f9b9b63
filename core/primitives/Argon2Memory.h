// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Argon2Segment.h"

#include <cstddef>
#include <cstdint>

namespace Argon2 {

/// The blocks of one hash, zero at first, in one mapping: in huge pages where the kernel has them, since the next block
/// may be anywhere, and left out of dumps.
class WorkingArea {
public:
    /// @throws Error allocationFailed
    explicit WorkingArea(std::uint32_t blocks);
    WorkingArea(const WorkingArea&) = delete;
    WorkingArea& operator=(const WorkingArea&) = delete;
    /// Gives the memory back; it has been wiped by then.
    ~WorkingArea();

    [[nodiscard]] std::uint64_t* words() const noexcept { return m_words; }

private:
    void* m_mapping;
    std::size_t m_mappingSize;
    std::uint64_t* m_words;
};

/// Overwrites blocks with zeros, past the caches: they are not read again.
void wipeBlocks(std::uint64_t* words, std::uint64_t blocks) noexcept;

}  // namespace Argon2
