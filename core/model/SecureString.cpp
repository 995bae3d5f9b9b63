// SPDX-License-Identifier: MIT
#include "core/model/SecureString.h"

#include "core/primitives/ChaCha20Stream.h"
#include "core/primitives/Random.h"
#include "core/text/Text.h"

#include <algorithm>
#include <functional>

namespace {

/// A text that is wiped when it goes.
struct WipedText {
    std::string text;

    explicit WipedText(std::string text) : text(std::move(text)) {}
    WipedText(const WipedText&) = delete;
    WipedText& operator=(const WipedText&) = delete;
    ~WipedText() { wipe(text); }
};

constexpr std::size_t longestDrawnPad = 4096;

/// The system's source takes a tenth of a second for 16 MB: from there comes the pad, or where it is long, the key of
/// the stream that is it.
void fillPad(std::span<std::uint8_t> pad) {
    if (pad.size() <= longestDrawnPad)
        return fillRandom(pad);
    const auto start = randomBytes(32 + 12);
    ChaCha20Stream stream({.key = ByteView(start).first(32), .nonce = ByteView(start).last(12)}, 0);
    stream.processInPlace(pad);  // of zeros
}

}  // namespace

SecureString::SecureString(std::string_view text) {
    if (text.empty())
        return;
    Bytes masked(2 * text.size());
    const auto pad = std::span(masked).last(text.size());
    fillPad(pad);
    std::ranges::transform(bytesOf(text), pad, masked.begin(), std::bit_xor());
    m_masked = std::make_shared<const Bytes>(std::move(masked));
}

std::string SecureString::value() const {
    std::string text(cipher().size(), '\0');
    std::ranges::transform(cipher(), pad(), text.begin(), std::bit_xor());
    if (Text::isValidUTF8(bytesOf(text)))
        return text;
    const WipedText unrepaired(std::move(text));
    return Text::repairingUTF8(bytesOf(unrepaired.text));
}

bool operator==(const SecureString& a, const SecureString& b) {
    if (a.m_masked == b.m_masked)
        return true;
    const WipedText aText(a.value());
    const WipedText bText(b.value());
    return Text::equal(aText.text, bText.text);
}

ByteView SecureString::cipher() const noexcept {
    return m_masked ? ByteView(*m_masked).first(m_masked->size() / 2) : ByteView();
}

ByteView SecureString::pad() const noexcept {
    return m_masked ? ByteView(*m_masked).last(m_masked->size() / 2) : ByteView();
}

void wipe(std::string& text) noexcept {
    const auto wipeToCapacity = [&text] {
        text.resize(text.capacity());
        secureWipe(text.data(), text.size());
    };
    // Behind the end an earlier, longer text may have left its tail; and in the string itself, once the memory outside
    // is gone, an earlier text that was short enough to be there.
    wipeToCapacity();
    std::string().swap(text);
    wipeToCapacity();
    text.clear();
}
