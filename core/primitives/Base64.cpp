// SPDX-License-Identifier: MIT
#include "core/primitives/Base64.h"

#include <array>

namespace Base64 {
namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t foreign = 0xFF;
constexpr std::uint8_t padding = 0xFE;

constexpr auto valueOfCharacter = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(foreign);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        values[static_cast<std::uint8_t>(alphabet[i])] = static_cast<std::uint8_t>(i);
    values['='] = padding;
    return values;
}();

enum class ForeignCharacters : std::uint8_t { fail, passOver };

/// Takes groups of four characters of the alphabet from the beginning of `text`, as far as they go, and gives their
/// bytes: all of most texts, without a look at each character's kind.
Bytes takeGroups(std::string_view& text) {
    Bytes bytes(text.size() / 4 * 3 + 3);
    auto* out = bytes.data();
    for (; text.size() >= 4; text.remove_prefix(4)) {
        const auto value = [&](std::size_t i) {
            return std::uint32_t{valueOfCharacter[static_cast<std::uint8_t>(text[i])]};
        };
        // What is foreign and what is padding has the highest bit.
        if (((value(0) | value(1) | value(2) | value(3)) & 0x80) != 0)
            break;
        const auto group = value(0) << 18 | value(1) << 12 | value(2) << 6 | value(3);
        *out++ = static_cast<std::uint8_t>(group >> 16);
        *out++ = static_cast<std::uint8_t>(group >> 8);
        *out++ = static_cast<std::uint8_t>(group);
    }
    bytes.resize(static_cast<std::size_t>(out - bytes.data()));
    return bytes;
}

/// The bytes of whole groups of four characters; padding only closes the last one.
std::optional<Bytes> decode(std::string_view text, ForeignCharacters foreignCharacters) {
    Bytes bytes = takeGroups(text);
    std::uint32_t group = 0;
    int inGroup = 0;
    int padded = 0;
    for (const char character : text) {
        const auto value = valueOfCharacter[static_cast<std::uint8_t>(character)];
        if (value == foreign) {
            if (foreignCharacters == ForeignCharacters::fail)
                return std::nullopt;
            continue;
        }
        if (value == padding) {
            if (inGroup < 2 || ++padded + inGroup > 4)
                return std::nullopt;
            continue;
        }
        if (padded > 0)
            return std::nullopt;
        group = group << 6 | value;
        if (++inGroup == 4) {
            bytes.insert(bytes.end(), {static_cast<std::uint8_t>(group >> 16), static_cast<std::uint8_t>(group >> 8),
                                       static_cast<std::uint8_t>(group)});
            group = 0;
            inGroup = 0;
        }
    }
    if (inGroup == 0)
        return bytes;
    if (inGroup + padded != 4)
        return std::nullopt;
    group <<= 6 * padded;
    bytes.push_back(static_cast<std::uint8_t>(group >> 16));
    if (padded == 1)
        bytes.push_back(static_cast<std::uint8_t>(group >> 8));
    return bytes;
}

/// Writes the four characters of each group of three bytes to `out`.
template <class Character>
void encodeTo(Character* out, ByteView data) {
    const auto put = [&](std::uint32_t group, int characters) {
        for (int i = 0; i < 4; ++i)
            *out++ = static_cast<Character>(i < characters ? alphabet[group >> (18 - 6 * i) & 63] : '=');
    };
    std::size_t i = 0;
    for (; i + 3 <= data.size(); i += 3)
        put(static_cast<std::uint32_t>(data[i] << 16 | data[i + 1] << 8 | data[i + 2]), 4);
    if (i + 1 == data.size())
        put(static_cast<std::uint32_t>(data[i] << 16), 2);
    else if (i + 2 == data.size())
        put(static_cast<std::uint32_t>(data[i] << 16 | data[i + 1] << 8), 3);
}

constexpr std::size_t encodedSize(std::size_t size) {
    return (size + 2) / 3 * 4;
}

}  // namespace

std::string encode(ByteView data) {
    std::string text(encodedSize(data.size()), '\0');
    encodeTo(text.data(), data);
    return text;
}

void appendEncoded(Bytes& buffer, ByteView data) {
    const auto offset = buffer.size();
    buffer.resize(offset + encodedSize(data.size()));
    encodeTo(buffer.data() + offset, data);
}

std::optional<Bytes> decodeStrict(std::string_view text) {
    return decode(text, ForeignCharacters::fail);
}

std::optional<Bytes> decodeLenient(std::string_view text) {
    return decode(text, ForeignCharacters::passOver);
}

}  // namespace Base64
