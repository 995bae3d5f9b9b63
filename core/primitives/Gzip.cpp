// SPDX-License-Identifier: MIT
#include "core/primitives/Gzip.h"

#include "core/primitives/AvailableMemory.h"
#include "core/primitives/LittleEndian.h"
#include "core/primitives/Overloaded.h"

#include <libdeflate.h>

#include <algorithm>
#include <array>
#include <memory>
#include <new>

namespace Gzip {
namespace {

// Magic, method "deflate", no flags, no time, no extra flags, system "Unix" (RFC 1952, section 2.3).
constexpr std::array<std::uint8_t, 10> fixedHeader{0x1F, 0x8B, 0x08, 0, 0, 0, 0, 0, 0, 3};
constexpr std::size_t magicSize = 3;  // with the method
constexpr std::size_t trailerSize = 8;

enum Flag : std::uint8_t { headerCRC = 1 << 1, extra = 1 << 2, name = 1 << 3, comment = 1 << 4 };

// A save waits for it: 31 ms for a document of 10 MB. The next level takes 43 ms to make the file a twentieth smaller,
// those above 110 ms and more for the next hundredth.
constexpr int compressionLevel = 6;

// How many times its own size a stream is believed to hold when the trailer says so. Documents deflate to a tenth;
// one that holds more gets its room by doubling, and the trailer of none can ask for more than that ahead.
constexpr std::uint64_t trustedRatio = 32;

struct Free {
    void operator()(libdeflate_compressor* compressor) const noexcept { libdeflate_free_compressor(compressor); }
    void operator()(libdeflate_decompressor* decompressor) const noexcept {
        libdeflate_free_decompressor(decompressor);
    }
};

Bytes makeRoom(std::size_t size) try { return Bytes(size); } catch (const std::bad_alloc&) {
    throw Error::streamFailure();
}

/// The largest output that is tried: a quarter of what is available, since to read a document takes several times its
/// size beside it. So a small file that inflates to more than the machine has is refused before it takes the memory of
/// all other programs; where the process itself is limited further, the allocation fails first.
std::uint64_t servedByThisMachine() {
    return availableMemory() / 4;
}

/// What the stream at the beginning of `body` holds; what follows the stream is not looked at. The library
/// wants the room ahead and cannot go on in more of it, so a stream that turns out larger starts over in twice as
/// much. `sizeHint` saves an honest file from that, and a lie costs no more than a share of the file's own size.
Bytes inflate(ByteView body, std::uint64_t sizeHint, std::uint64_t largestOutput) {
    if (body.empty())
        return {};
    const std::unique_ptr<libdeflate_decompressor, Free> decompressor(libdeflate_alloc_decompressor());
    if (!decompressor)
        throw Error::streamFailure();
    auto room = std::clamp<std::uint64_t>(sizeHint, body.size(), trustedRatio * body.size());
    for (;; room *= 2) {
        Bytes output = makeRoom(std::min(room, largestOutput));
        std::size_t size = 0;
        const auto result = libdeflate_deflate_decompress(decompressor.get(), body.data(), body.size(), output.data(),
                                                          output.size(), &size);
        if (result == LIBDEFLATE_SUCCESS) {
            output.resize(size);
            return output;
        }
        if (result != LIBDEFLATE_INSUFFICIENT_SPACE || room >= largestOutput)
            throw Error::streamFailure();
    }
}

/// The offset behind the text that starts at `offset` and ends with a zero byte.
std::size_t behindText(ByteView data, std::size_t offset) {
    while (offset < data.size())
        if (data[offset++] == 0)
            return offset;
    throw Error::truncated();
}

std::size_t behindHeaderCRC(ByteView data, std::size_t offset) {
    if (offset + 2 > data.size())
        throw Error::truncated();
    if (loadLE<std::uint16_t>(&data[offset]) != static_cast<std::uint16_t>(crc32(data.first(offset))))
        throw Error::headerCRCMismatch();
    return offset + 2;
}

/// Where the DEFLATE stream begins in a member that is at least as large as the smallest one.
std::size_t bodyOffset(ByteView data) {
    const auto flags = data[3];
    auto offset = fixedHeader.size();
    if (flags & Flag::extra)
        offset += 2 + loadLE<std::uint16_t>(&data[offset]);
    if (flags & Flag::name)
        offset = behindText(data, offset);
    if (flags & Flag::comment)
        offset = behindText(data, offset);
    if (flags & Flag::headerCRC)
        offset = behindHeaderCRC(data, offset);
    if (offset + trailerSize > data.size())
        throw Error::truncated();
    return offset;
}

}  // namespace

std::string ErrorCases::describe(const Case& failure) {
    using namespace std::string_literals;
    return std::visit(Overloaded{
                          [](const CrcMismatch& e) {
                              return "Gzip: CRC32 uyuşmuyor (beklenen " + std::to_string(e.expected) + ", bulunan " +
                                     std::to_string(e.actual) + ").";
                          },
                          [](const SizeMismatch& e) {
                              return "Gzip: açılan boyut uyuşmuyor (beklenen " + std::to_string(e.expected) +
                                     ", bulunan " + std::to_string(e.actual) + ").";
                          },
                          [](const NotGzip&) { return "Gzip: geçersiz sihirli sayı."s; },
                          [](const Truncated&) { return "Gzip: veri eksik."s; },
                          [](const HeaderCRCMismatch&) { return "Gzip: başlık CRC uyuşmuyor."s; },
                          [](const StreamFailure&) { return "Gzip: sıkıştırma akışı başarısız."s; },
                      },
                      failure);
}

Bytes compress(ByteView data) {
    const std::unique_ptr<libdeflate_compressor, Free> compressor(libdeflate_alloc_compressor(compressionLevel));
    if (!compressor)
        throw Error::streamFailure();
    const auto bound = libdeflate_deflate_compress_bound(compressor.get(), data.size());
    Bytes member = makeRoom(fixedHeader.size() + bound + trailerSize);
    std::ranges::copy(fixedHeader, member.begin());
    // With room for the bound it cannot fail.
    const auto size = libdeflate_deflate_compress(compressor.get(), data.data(), data.size(),
                                                  member.data() + fixedHeader.size(), bound);
    auto* const trailer = member.data() + fixedHeader.size() + size;
    storeLE(trailer, crc32(data));
    storeLE(trailer + 4, static_cast<std::uint32_t>(data.size()));
    member.resize(fixedHeader.size() + size + trailerSize);
    return member;
}

Bytes decompress(ByteView data) {
    return decompress(data, servedByThisMachine());
}

Bytes decompress(ByteView data, std::uint64_t largestOutput) {
    if (data.size() < fixedHeader.size() + trailerSize)
        throw Error::truncated();
    if (!std::ranges::equal(data.first(magicSize), std::span(fixedHeader).first(magicSize)))
        throw Error::notGzip();
    const auto offset = bodyOffset(data);
    const auto body = data.subspan(offset, data.size() - trailerSize - offset);
    const auto trailer = data.last(trailerSize);
    const auto storedCrc = loadLE<std::uint32_t>(&trailer[0]);
    const auto storedSize = loadLE<std::uint32_t>(&trailer[4]);
    Bytes output = inflate(body, storedSize, largestOutput);
    if (storedSize != static_cast<std::uint32_t>(output.size()))
        throw Error::sizeMismatch({.expected = storedSize, .actual = std::ssize(output)});
    if (const auto crc = crc32(output); crc != storedCrc)
        throw Error::crcMismatch({.expected = storedCrc, .actual = crc});
    return output;
}

std::uint32_t crc32(ByteView data) noexcept {
    return libdeflate_crc32(0, data.data(), data.size());
}

}  // namespace Gzip
