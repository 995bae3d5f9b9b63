// SPDX-License-Identifier: MIT
#include "core/primitives/Blake2b.h"

#include "core/primitives/LittleEndian.h"
#include "core/primitives/Precondition.h"

#include <algorithm>
#include <limits>

namespace Blake2b {
namespace {

constexpr std::int64_t longestDigest = 64;
constexpr std::size_t longestKey = 64;

// The first parameter word but for the two lengths: fan-out 1, depth 1 (RFC 7693, section 2.5).
constexpr std::uint64_t sequentialMode = 0x1010000;

constexpr std::uint64_t notLast = 0;
constexpr std::uint64_t last = ~std::uint64_t{0};

}  // namespace

State::State(std::int64_t outputLength, ByteView key, Implementation implementation)
    : m_digestLength(outputLength), m_compress(compressFor(implementation)) {
    precondition(outputLength >= 1 && outputLength <= longestDigest);  // longHash splits what is longer
    precondition(key.size() <= longestKey);                            // keys are the program's own
    precondition(isSupported(implementation));                         // widestVectors has asked the processor
    std::copy_n(iv, 8, m_chain.h);
    m_chain.h[0] ^= sequentialMode ^ key.size() << 8 ^ static_cast<std::uint64_t>(outputLength);
    m_chain.tLow = 0;
    m_chain.tHigh = 0;
    if (!key.empty()) {
        std::ranges::copy(key, m_buf.begin());
        m_bufLen = blockSize;
    }
}

State::~State() {
    secureWipe(&m_chain, sizeof m_chain);
    secureWipe(m_buf.data(), m_buf.size());
    wipeUnusedStack();  // where the message words were spilled to
}

void State::update(ByteView data) {
    if (data.empty())
        return;
    const auto room = blockSize - m_bufLen;
    if (data.size() > room) {
        // Only a block that something follows is compressed: the last one, even a full one, waits for finalize.
        fill(data.first(room));
        data = data.subspan(room);
        m_compress(m_chain, {m_buf.data(), 1, blockSize, notLast});
        m_bufLen = 0;
        const auto whole = (data.size() - 1) / blockSize;
        m_compress(m_chain, {data.data(), whole, blockSize, notLast});
        data = data.subspan(whole * blockSize);
    }
    fill(data);
}

void State::fill(ByteView data) {
    std::ranges::copy(data, m_buf.begin() + static_cast<std::ptrdiff_t>(m_bufLen));
    m_bufLen += data.size();
}

Bytes State::finalize() {
    std::fill(m_buf.begin() + static_cast<std::ptrdiff_t>(m_bufLen), m_buf.end(), std::uint8_t{0});
    m_compress(m_chain, {m_buf.data(), 1, m_bufLen, last});
    Bytes digest(longestDigest);
    for (std::size_t i = 0; i < 8; ++i)
        storeLE(digest.data() + 8 * i, m_chain.h[i]);
    digest.resize(static_cast<std::size_t>(m_digestLength));
    return digest;
}

Bytes hash(ByteView data, std::int64_t outputLength, ByteView key) {
    State state(outputLength, key);
    state.update(data);
    return state.finalize();
}

Bytes longHash(ByteView data, std::int64_t outputLength) {
    // The one caller checks its output length, or asks for a block of 1024 bytes.
    precondition(outputLength >= 1 && outputLength <= std::numeric_limits<std::uint32_t>::max());
    State first(std::min(outputLength, longestDigest));
    Bytes prefix;
    appendLE(prefix, static_cast<std::uint32_t>(outputLength));
    first.update(prefix);
    first.update(data);
    Bytes v = first.finalize();
    if (outputLength <= longestDigest)
        return v;

    Bytes result;
    result.reserve(static_cast<std::size_t>(outputLength));
    auto left = outputLength;
    for (; left > longestDigest; left -= 32) {
        append(result, ByteView(v).first(32));
        v = hash(v, std::min(left - 32, longestDigest));
    }
    append(result, v);
    return result;
}

}  // namespace Blake2b
