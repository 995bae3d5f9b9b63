// SPDX-License-Identifier: MIT
#include "core/primitives/AESRounds.h"

#include "core/primitives/AESOperation.h"
#include "core/primitives/AESRoundsInstructions.h"
#include "core/primitives/Precondition.h"

namespace AESRounds {
namespace {

constexpr std::size_t keySize = 32;
constexpr std::size_t blockSize = 32;

/// One call a round for both halves: the fixed cost of a call is what a round costs.
void encipherThroughLibrary(Bytes& block, ByteView key, std::uint64_t rounds) {
    AESOperation operation(AESOperation::Direction::encrypt, key, {});
    for (std::uint64_t round = 0; round < rounds; ++round)
        operation.update(block.data(), block);
}

}  // namespace

bool isServed(Road road) noexcept {
#if defined(__x86_64__)
    if (road == Road::aesInstructions)
        return __builtin_cpu_supports("aes");
#endif
    return road == Road::portable;
}

Road bestRoad() noexcept {
    return isServed(Road::aesInstructions) ? Road::aesInstructions : Road::portable;
}

Bytes run(Road road, ByteView block, ByteView key, std::uint64_t rounds) {
    // The only callers hand in SHA-256 digests and seeds whose size they have checked.
    precondition(block.size() == blockSize && key.size() == keySize);
    Bytes result = copyOf(block);
    if (road == Road::aesInstructions) {
        encipherWithAESInstructions(result.data(), key.data(), rounds);
        wipeUnusedStack();
    } else {
        encipherThroughLibrary(result, key, rounds);
    }
    return result;
}

}  // namespace AESRounds
