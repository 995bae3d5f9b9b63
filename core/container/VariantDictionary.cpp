// SPDX-License-Identifier: MIT
#include "core/container/VariantDictionary.h"

#include "core/container/KdbxReader.h"
#include "core/model/KdbxError.h"
#include "core/primitives/Hexadecimal.h"
#include "core/primitives/LittleEndian.h"
#include "core/primitives/Overloaded.h"

#include <algorithm>
#include <array>
#include <limits>

namespace {

// The type byte of each kind, as the format publishes them.
enum class TypeByte : std::uint8_t {
    end = 0x00,
    uint32 = 0x04,
    uint64 = 0x05,
    boolean = 0x08,
    int32 = 0x0C,
    int64 = 0x0D,
    string = 0x18,
    bytes = 0x42
};

// In the order of VariantValue::Case.
constexpr std::array<TypeByte, std::variant_size_v<VariantValue::Case>> typeBytes{
    TypeByte::uint32, TypeByte::uint64, TypeByte::boolean, TypeByte::int32,
    TypeByte::int64,  TypeByte::string, TypeByte::bytes};

template <class Number>
Bytes littleEndian(Number number) {
    Bytes bytes;
    appendLE(bytes, number);
    return bytes;
}

/// A number that takes all of a value and nothing more.
template <class Number>
Number numberOf(ByteView value, std::string_view kind) {
    if (value.size() != sizeof(Number))
        throw KdbxError::corruptedData(std::string(kind) + " alanı " + std::to_string(sizeof(Number)) + " bayt değil");
    return loadLE<Number>(value.data());
}

VariantValue valueOf(TypeByte type, ByteView value) {
    switch (type) {
        case TypeByte::uint32:
            return {numberOf<std::uint32_t>(value, "UInt32")};
        case TypeByte::uint64:
            return {numberOf<std::uint64_t>(value, "UInt64")};
        case TypeByte::boolean:
            return {numberOf<std::uint8_t>(value, "Bool") != 0};
        case TypeByte::int32:
            return {numberOf<std::int32_t>(value, "Int32")};
        case TypeByte::int64:
            return {numberOf<std::int64_t>(value, "Int64")};
        case TypeByte::string:
            return {Text::repairingUTF8(value)};
        case TypeByte::bytes:
            return {copyOf(value)};
        default:
            throw KdbxError::corruptedData("bilinmeyen VariantDictionary tipi 0x" +
                                           hexadecimalNumber(static_cast<std::uint32_t>(type)));
    }
}

/// The next bytes behind their length. A length is signed in the format, and none of ours is negative.
ByteView readSized(KdbxReader& reader, std::string_view whatItIs) {
    const auto length = reader.i32();
    if (length < 0)
        throw KdbxError::corruptedData("VariantDictionary " + std::string(whatItIs) + " uzunluğu negatif");
    return reader.read(length);
}

void appendSized(Bytes& out, ByteView bytes) {
    appendLE(out, static_cast<std::uint32_t>(bytes.size()));
    append(out, bytes);
}

}  // namespace

Bytes VariantValue::payload() const {
    return std::visit(Overloaded{
                          [](bool flag) { return littleEndian<std::uint8_t>(flag ? 1 : 0); },
                          [](const std::string& text) { return copyOf(bytesOf(text)); },
                          [](const Bytes& bytes) { return bytes; },
                          [](auto number) { return littleEndian(number); },
                      },
                      value);
}

std::optional<std::uint64_t> VariantValue::asUInt64() const {
    const auto unlessNegative = [](std::int64_t number) -> std::optional<std::uint64_t> {
        if (number < 0)
            return std::nullopt;
        return static_cast<std::uint64_t>(number);
    };
    return std::visit(Overloaded{
                          [](std::uint32_t number) -> std::optional<std::uint64_t> { return number; },
                          [](std::uint64_t number) -> std::optional<std::uint64_t> { return number; },
                          [&](std::int32_t number) { return unlessNegative(number); },
                          [&](std::int64_t number) { return unlessNegative(number); },
                          [](const auto&) -> std::optional<std::uint64_t> { return std::nullopt; },
                      },
                      value);
}

std::optional<std::uint32_t> VariantValue::asUInt32() const {
    const auto number = asUInt64();
    if (!number || *number > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return static_cast<std::uint32_t>(*number);
}

std::optional<Bytes> VariantValue::asData() const {
    const auto* bytes = std::get_if<Bytes>(&value);
    return bytes ? std::optional(*bytes) : std::nullopt;
}

std::optional<std::string> VariantValue::asString() const {
    const auto* text = std::get_if<std::string>(&value);
    return text ? std::optional(*text) : std::nullopt;
}

bool operator==(const VariantValue& a, const VariantValue& b) {
    const auto* textOfA = std::get_if<std::string>(&a.value);
    const auto* textOfB = std::get_if<std::string>(&b.value);
    return textOfA && textOfB ? Text::equal(*textOfA, *textOfB) : a.value == b.value;
}

VariantDictionary VariantDictionary::parse(ByteView data) {
    KdbxReader reader(data);
    const auto fileVersion = reader.u16();
    if (fileVersion >> 8 != version >> 8)
        throw KdbxError::corruptedData("desteklenmeyen VariantDictionary sürümü " + hexadecimalNumber(fileVersion));

    VariantDictionary dictionary;
    for (auto type = TypeByte{reader.u8()}; type != TypeByte::end; type = TypeByte{reader.u8()}) {
        const auto key = Text::repairingUTF8(readSized(reader, "anahtar"));
        const auto value = readSized(reader, "değer");
        dictionary.set(key, valueOf(type, value));
    }
    return dictionary;
}

Bytes VariantDictionary::serialize() const {
    Bytes out;
    appendLE(out, version);
    for (const auto& key : m_keys) {
        const auto& value = m_storage.find(key)->second;
        out.push_back(static_cast<std::uint8_t>(typeBytes[value.value.index()]));
        appendSized(out, bytesOf(key));
        appendSized(out, value.payload());
    }
    out.push_back(static_cast<std::uint8_t>(TypeByte::end));
    return out;
}

const VariantValue* VariantDictionary::operator[](std::string_view key) const {
    const auto found = m_storage.find(key);
    return found == m_storage.end() ? nullptr : &found->second;
}

void VariantDictionary::set(std::string_view key, VariantValue value) {
    const auto found = m_storage.find(key);
    if (found != m_storage.end()) {
        found->second = std::move(value);
    } else {
        m_storage.emplace(key, std::move(value));
        m_keys.emplace_back(key);
    }
}

void VariantDictionary::set(std::string_view key, std::nullopt_t) {
    const auto found = m_storage.find(key);
    if (found == m_storage.end())
        return;
    m_storage.erase(found);
    std::erase_if(m_keys, [&](const auto& other) { return Text::equal(other, key); });
}

bool operator==(const VariantDictionary& a, const VariantDictionary& b) {
    return std::ranges::equal(a.m_keys, b.m_keys, Text::equal) &&
           std::ranges::equal(a.m_storage, b.m_storage,
                              [](const auto& x, const auto& y) { return x.second == y.second; });
}
