// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

/// A running keystream. It carries its position, so one instance serves one document, and the calls
/// come in document order.
class InnerStreamCipher {
public:
    InnerStreamCipher() = default;
    InnerStreamCipher(const InnerStreamCipher&) = delete;
    InnerStreamCipher& operator=(const InnerStreamCipher&) = delete;
    virtual ~InnerStreamCipher() = default;

    /// XORs `data` in place with the next bytes of the keystream. Enciphers and deciphers alike.
    virtual void processInPlace(std::span<std::uint8_t> data) = 0;

    /// `data` XORed with the next bytes of the keystream.
    [[nodiscard]] Bytes process(ByteView data) {
        Bytes result = copyOf(data);
        processInPlace(result);
        return result;
    }
};

/// The stream that changes nothing.
class NullStreamCipher final : public InnerStreamCipher {
public:
    void processInPlace(std::span<std::uint8_t>) override {}
};
