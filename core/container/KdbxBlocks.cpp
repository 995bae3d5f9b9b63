// SPDX-License-Identifier: MIT
// The two framings of a payload: SHA-256 blocks (KDBX 3) and HMAC blocks (KDBX 4).
#include "core/container/KdbxCrypto.h"
#include "core/container/KdbxGate.h"
#include "core/model/KdbxError.h"
#include "core/primitives/LittleEndian.h"
#include "core/primitives/Precondition.h"
#include "core/primitives/Sha2.h"

#include <algorithm>
#include <limits>

namespace KdbxCrypto {
namespace {

constexpr std::size_t hashedOverhead = 4 + Sha2::sha256Size + 4;  // index, hash, size
constexpr std::size_t hmacOverhead = Sha2::sha256Size + 4;        // HMAC, size

std::array<std::uint8_t, 8> eightBytes(std::uint64_t number) {
    std::array<std::uint8_t, 8> bytes{};
    storeLE(bytes.data(), number);
    return bytes;
}

/// The pieces of `data` in order, then an empty one.
template <class Write>
void forEachBlock(ByteView data, std::size_t blockSize, Write write) {
    std::uint64_t index = 0;
    for (std::size_t offset = 0; offset < data.size(); offset += blockSize)
        write(index++, data.subspan(offset, std::min(blockSize, data.size() - offset)));
    write(index, ByteView());
}

/// Room for the whole stream, so that it never moves.
std::size_t framedSize(ByteView data, std::size_t blockSize, std::size_t overhead) {
    precondition(blockSize > 0 && blockSize <= std::numeric_limits<std::uint32_t>::max());  // a constant of ours
    return data.size() + (data.size() / blockSize + 2) * overhead;
}

struct SizedBlock {
    ByteView size;  // as the stream has it
    ByteView data;
};

/// The index, the size as the stream has it, and the data are authenticated; only the last two are stored.
Bytes blockHMAC(std::uint64_t index, const SizedBlock& block, const HmacBase& base) {
    return Sha2::hmacSha256({.key = blockKey(index, base)}, {eightBytes(index), block.size, block.data});
}

bool isAllZero(ByteView bytes) {
    return std::ranges::all_of(bytes, [](std::uint8_t byte) { return byte == 0; });
}

}  // namespace

Bytes readHashedBlocks(KdbxReader& reader) {
    Bytes data;
    data.reserve(static_cast<std::size_t>(reader.remaining()));
    for (std::int64_t expected = 0;; ++expected) {
        const auto index = reader.u32();
        const auto hash = reader.read(Sha2::sha256Size);
        const auto size = reader.u32();
        if (index != expected)
            throw KdbxError::corruptedData("blok sırası bozuk (" + std::to_string(index) +
                                           " != " + std::to_string(expected) + ")");
        if (size == 0) {
            if (!isAllZero(hash))
                throw KdbxError::corruptedData("sonlandırıcı bloğun hash'i sıfır değil");
            return data;
        }
        const auto block = reader.read(size);
        if (!KdbxGate::isAuthentic(Sha2::sha256(block), hash))
            throw KdbxError::blockHmacMismatch(expected);
        append(data, block);
    }
}

Bytes writeHashedBlocks(ByteView data, std::size_t blockSize) {
    Bytes out;
    out.reserve(framedSize(data, blockSize, hashedOverhead));
    forEachBlock(data, blockSize, [&](std::uint64_t index, ByteView block) {
        appendLE(out, static_cast<std::uint32_t>(index));
        append(out, block.empty() ? Bytes(Sha2::sha256Size, 0) : Sha2::sha256(block));
        appendLE(out, static_cast<std::uint32_t>(block.size()));
        append(out, block);
    });
    return out;
}

Bytes readHMACBlocks(KdbxReader& reader, const HmacBase& base) {
    Bytes data;
    data.reserve(static_cast<std::size_t>(reader.remaining()));
    for (std::int64_t index = 0;; ++index) {
        const auto stored = reader.read(Sha2::sha256Size);
        const auto sizeBytes = reader.read(sizeof(std::uint32_t));
        const auto block = reader.read(loadLE<std::uint32_t>(sizeBytes.data()));
        const auto computed = blockHMAC(static_cast<std::uint64_t>(index), {.size = sizeBytes, .data = block}, base);
        if (!KdbxGate::isAuthentic(computed, stored))
            throw KdbxError::blockHmacMismatch(index);
        if (block.empty())
            return data;
        append(data, block);
    }
}

Bytes writeHMACBlocks(ByteView data, const HmacBase& base, std::size_t blockSize) {
    Bytes out;
    out.reserve(framedSize(data, blockSize, hmacOverhead));
    forEachBlock(data, blockSize, [&](std::uint64_t index, ByteView block) {
        Bytes size;
        appendLE(size, static_cast<std::uint32_t>(block.size()));
        append(out, blockHMAC(index, {.size = size, .data = block}, base));
        append(out, size);
        append(out, block);
    });
    return out;
}

Bytes blockKey(std::uint64_t index, const HmacBase& base) {
    return Sha2::sha512({eightBytes(index), base.key});
}

}  // namespace KdbxCrypto
