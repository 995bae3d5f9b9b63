// SPDX-License-Identifier: MIT
#include "core/primitives/Gzip.h"
#include "core/primitives/LittleEndian.h"

#include <cstdlib>
#include <optional>

namespace {

// Enough for any small input to inflate to, and little enough to be fast.
constexpr std::uint64_t largestOutput = 8 << 20;

void expect(bool property) {
    if (!property)
        std::abort();
}

void expectToComeBack(ByteView data) {
    const auto again = Gzip::decompress(Gzip::compress(data));
    expect(again == copyOf(data));
}

/// The failure of a member; nothing for one that is read, whose content must then survive.
std::optional<Gzip::Error> failureOf(ByteView member) {
    try {
        expectToComeBack(Gzip::decompress(member, largestOutput));
    } catch (const Gzip::Error& error) {
        return error;
    }
    return std::nullopt;
}

/// The input as a body, with the trailer that its failures ask for one after the other: so mutations reach what stands
/// behind the checks.
void readAsBody(ByteView body) {
    Bytes member{0x1F, 0x8B, 0x08, 0, 0, 0, 0, 0, 0, 3};
    append(member, body);
    member.resize(member.size() + 8, 0);
    auto* const trailer = member.data() + member.size() - 8;
    auto failure = failureOf(member);
    if (failure && std::holds_alternative<Gzip::Error::SizeMismatch>(failure->failure())) {
        storeLE(trailer + 4,
                static_cast<std::uint32_t>(std::get<Gzip::Error::SizeMismatch>(failure->failure()).actual));
        failure = failureOf(member);
    }
    if (failure && std::holds_alternative<Gzip::Error::CrcMismatch>(failure->failure())) {
        storeLE(trailer, std::get<Gzip::Error::CrcMismatch>(failure->failure()).actual);
        failure = failureOf(member);
    }
    expect(!failure || *failure == Gzip::Error::streamFailure());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteView input(data, size);
    (void)failureOf(input);
    readAsBody(input);
    expectToComeBack(input);
    return 0;
}
