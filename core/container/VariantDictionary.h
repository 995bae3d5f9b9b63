// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"
#include "core/text/Text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// One value of a dictionary, with its kind.
struct VariantValue {
    using Case = std::variant<std::uint32_t, std::uint64_t, bool, std::int32_t, std::int64_t, std::string, Bytes>;

    Case value;

    /// The value as a file has it: numbers little-endian, a boolean as one byte 1 or 0, a text in UTF-8.
    [[nodiscard]] Bytes payload() const;

    /// A number of any width and sign that fits; nothing for a negative one and for every other kind.
    [[nodiscard]] std::optional<std::uint64_t> asUInt64() const;
    [[nodiscard]] std::optional<std::uint32_t> asUInt32() const;
    /// The buffer or the text, if it is one.
    [[nodiscard]] std::optional<Bytes> asData() const;
    [[nodiscard]] std::optional<std::string> asString() const;

    /// The same kind and value, texts by canonical equivalence.
    friend bool operator==(const VariantValue& a, const VariantValue& b);
};

/// The typed record in the header of a KDBX 4 file. It keeps the order in which keys came, since the header's bytes
/// are hashed and authenticated. Keys are texts: of two canonically equivalent spellings the first stays.
class VariantDictionary {
public:
    /// A reader must know the high byte; the low one counts changes that it can leave alone.
    static constexpr std::uint16_t version = 0x0100;

    /// What a file holds. A repeated key keeps its first position and its last value; what follows the end is dropped.
    ///
    /// @throws KdbxError corruptedData.
    [[nodiscard]] static VariantDictionary parse(ByteView data);

    [[nodiscard]] Bytes serialize() const;

    /// In the order in which they came, each once.
    [[nodiscard]] const std::vector<std::string>& keys() const noexcept { return m_keys; }
    [[nodiscard]] bool isEmpty() const noexcept { return m_keys.empty(); }

    /// The value of a key, or none. It stays valid until the dictionary changes.
    [[nodiscard]] const VariantValue* operator[](std::string_view key) const;

    /// A new key goes last, a known one keeps its position; setting nothing removes the key.
    void set(std::string_view key, VariantValue value);
    void set(std::string_view key, std::nullopt_t);

    /// The same values under the same keys in the same order.
    friend bool operator==(const VariantDictionary& a, const VariantDictionary& b);

private:
    std::vector<std::string> m_keys;
    Text::Map<VariantValue> m_storage;  // holds exactly the keys of m_keys
};
