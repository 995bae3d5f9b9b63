// SPDX-License-Identifier: MIT
#include "core/primitives/Argon2Memory.h"

#include "core/primitives/AvailableMemory.h"

#include <sys/mman.h>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace Argon2 {
namespace {

constexpr std::size_t hugePageSize = std::size_t{2} << 20;

}  // namespace

WorkingArea::WorkingArea(std::uint32_t blocks) {
    const auto size = std::size_t{blocks} * bytesPerBlock;
    // A kernel that overcommits maps more than it has, and ends a process, ours or another, when the pages are
    // touched. A vault may ask for any amount, so what there is decides before the mapping does.
    if (size > availableMemory())
        throw Error::allocationFailed();

    // The room in front lets the blocks begin where a huge page does.
    m_mappingSize = size + (size < hugePageSize ? 0 : hugePageSize);
    m_mapping = ::mmap(nullptr, m_mappingSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (m_mapping == MAP_FAILED)
        throw Error::allocationFailed();
    // Both are wishes: a kernel without huge pages or without dumps to leave out serves as well.
    ::madvise(m_mapping, m_mappingSize, MADV_HUGEPAGE);
    ::madvise(m_mapping, m_mappingSize, MADV_DONTDUMP);

    auto address = reinterpret_cast<std::uintptr_t>(m_mapping);
    if (size >= hugePageSize)
        address = (address + hugePageSize - 1) / hugePageSize * hugePageSize;
    m_words = reinterpret_cast<std::uint64_t*>(address);
}

WorkingArea::~WorkingArea() {
    ::munmap(m_mapping, m_mappingSize);
}

void wipeBlocks(std::uint64_t* words, std::uint64_t blocks) noexcept {
#ifdef __SSE2__
    auto* pieces = reinterpret_cast<__m128i*>(words);
    for (auto* const end = pieces + blocks * bytesPerBlock / sizeof *pieces; pieces < end; pieces += 4) {
        _mm_stream_si128(pieces, _mm_setzero_si128());
        _mm_stream_si128(pieces + 1, _mm_setzero_si128());
        _mm_stream_si128(pieces + 2, _mm_setzero_si128());
        _mm_stream_si128(pieces + 3, _mm_setzero_si128());
    }
    _mm_sfence();
#else
    secureWipe(words, blocks * bytesPerBlock);
#endif
}

}  // namespace Argon2
