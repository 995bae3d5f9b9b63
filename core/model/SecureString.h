// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <memory>
#include <string>
#include <string_view>

/// A secret text whose plain bytes do not lie in the heap: they are kept masked by a random pad, and both are wiped
/// when the last copy goes. Copies share one unchanging object. It guards against a casual look at memory, not against
/// an attacker who reads the whole process, since the pad lies beside the masked bytes.
class SecureString {
public:
    /// The empty secret; draws no random value.
    SecureString() = default;
    explicit SecureString(std::string_view text);

    /// The secret in the clear, made anew at each call. The caller owns it, and wipes it where it can.
    [[nodiscard]] std::string value() const;

    [[nodiscard]] bool isEmpty() const noexcept { return !m_masked; }

    /// Equal as texts, whatever the pads.
    friend bool operator==(const SecureString& a, const SecureString& b);

    /// The masked bytes and their pad, equally long: for tests of the masking.
    [[nodiscard]] ByteView cipher() const noexcept;
    [[nodiscard]] ByteView pad() const noexcept;

private:
    std::shared_ptr<const Bytes> m_masked;  // the masked bytes and behind them their pad; none for the empty secret
};

/// Overwrites a text that held a secret, and empties it.
void wipe(std::string& text) noexcept;
