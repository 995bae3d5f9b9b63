// SPDX-License-Identifier: MIT
#include "core/primitives/AESRounds.h"

#include "core/primitives/AESOperation.h"
#include "core/primitives/AESRoundsInstructions.h"
#include "core/primitives/Precondition.h"

#include <algorithm>

namespace AESRounds {
namespace {

constexpr std::size_t keySize = 32;
constexpr std::size_t blockSize = 32;

/// Rounds between two looks at whether to go on: a millisecond's work where the processor has the instructions.
constexpr std::uint64_t roundsInPart = 1U << 16;

/// One call a round for both halves: the fixed cost of a call is what a round costs.
void encipherThroughLibrary(Bytes& block, ByteView key, std::uint64_t rounds) {
    AESOperation operation(AESOperation::Direction::encrypt, {.key = key});
    for (std::uint64_t round = 0; round < rounds; ++round)
        operation.update(block.data(), block);
}

void encipher(Implementation implementation, Bytes& block, ByteView key, std::uint64_t rounds) {
    if (implementation == Implementation::aesInstructions)
        encipherWithAESInstructions(block.data(), key.data(), rounds);
    else
        encipherThroughLibrary(block, key, rounds);
}

}  // namespace

Implementation bestImplementation() noexcept {
    return isSupported(Implementation::aesInstructions) ? Implementation::aesInstructions : Implementation::portable;
}

Bytes run(Implementation implementation, ByteView block, const AESCipher::KeyMaterial& under, std::uint64_t rounds,
          Derivation* derivation) {
    const auto key = under.key;
    // The only callers hand in SHA-256 digests and seeds whose size they have checked.
    precondition(block.size() == blockSize && key.size() == keySize);
    Bytes result = copyOf(block);
    if (derivation)
        derivation->begin(rounds);
    while (rounds > 0) {
        const auto part = std::min(rounds, roundsInPart);
        encipher(implementation, result, key, part);
        rounds -= part;
        if (!derivation)
            continue;
        derivation->advance(part);
        if (derivation->isGivenUp())
            break;
    }
    wipeUnusedStack();
    if (rounds > 0)
        throw DerivationGivenUp();
    return result;
}

}  // namespace AESRounds
