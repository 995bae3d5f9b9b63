// SPDX-License-Identifier: MIT
#include "core/container/VariantDictionary.h"

#include "tests/support/Failures.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Keys = std::vector<std::string>;

std::string parsing(std::string_view hex) {
    const auto data = fromHex(hex);
    return outcomeOf([&] { return VariantDictionary::parse(data); });
}

VariantDictionary parsed(std::string_view hex) {
    return VariantDictionary::parse(fromHex(hex));
}

template <class Value>
Value valueOf(const VariantDictionary& dictionary, std::string_view key) {
    return std::get<Value>(dictionary[key]->value);
}

// One item of each kind, under keys of one letter.
constexpr auto everyKind =
    "0001"
    "04 01000000 61 04000000 78563412"
    "05 01000000 62 08000000 f0debc9a78563412"
    "08 01000000 63 01000000 01"
    "0c 01000000 64 04000000 ffffffff"
    "0d 01000000 65 08000000 feffffffffffffff"
    "18 01000000 66 02000000 c59f"
    "42 01000000 67 03000000 010203"
    "00";

TEST(VariantDictionaryTest, readsEveryKindOfValue) {
    const auto dictionary = parsed(everyKind);

    EXPECT_EQ(dictionary.keys(), (Keys{"a", "b", "c", "d", "e", "f", "g"}));
    EXPECT_EQ(valueOf<std::uint32_t>(dictionary, "a"), 0x12345678u);
    EXPECT_EQ(valueOf<std::uint64_t>(dictionary, "b"), 0x123456789abcdef0u);
    EXPECT_TRUE(valueOf<bool>(dictionary, "c"));
    EXPECT_EQ(valueOf<std::int32_t>(dictionary, "d"), -1);
    EXPECT_EQ(valueOf<std::int64_t>(dictionary, "e"), -2);
    EXPECT_EQ(valueOf<std::string>(dictionary, "f"), "ş");
    EXPECT_EQ(toHex(valueOf<Bytes>(dictionary, "g")), "010203");
}

TEST(VariantDictionaryTest, writesEveryKindAsItWasRead) {
    EXPECT_EQ(toHex(parsed(everyKind).serialize()), toHex(fromHex(everyKind)));
}

TEST(VariantDictionaryTest, isEmptyOnlyWithItsTerminator) {
    EXPECT_EQ(parsing("0001"), shortData(1, 0));
    EXPECT_TRUE(parsed("000100").isEmpty());
    EXPECT_EQ(parsed("000100"), VariantDictionary());
    EXPECT_EQ(parsing(""), shortData(2, 0));
    EXPECT_EQ(parsing("00"), shortData(2, 1));
}

TEST(VariantDictionaryTest, acceptsAnyLowByteOfTheVersionAndNoOtherHighByte) {
    EXPECT_EQ(parsing("050100"), "nothing");
    EXPECT_EQ(parsing("ff0100"), "nothing");
    EXPECT_EQ(parsing("000200"), corruptedData("desteklenmeyen VariantDictionary sürümü 200"));
    EXPECT_EQ(parsing("000000"), corruptedData("desteklenmeyen VariantDictionary sürümü 0"));
    EXPECT_EQ(parsing("cdab00"), corruptedData("desteklenmeyen VariantDictionary sürümü abcd"));
}

TEST(VariantDictionaryTest, judgesAnUnknownKindOnlyOnceItsLengthsAreHonoured) {
    EXPECT_EQ(parsing("0001 07 01000000 61 01000000 00 00"), corruptedData("bilinmeyen VariantDictionary tipi 0x7"));
    EXPECT_EQ(parsing("0001 ff 01000000 61 01000000 00 00"), corruptedData("bilinmeyen VariantDictionary tipi 0xff"));
    EXPECT_EQ(parsing("0001 07 01000000 61 05000000 00"), shortData(5, 1));
    EXPECT_EQ(parsing("0001 07 05000000 61"), shortData(5, 1));
}

TEST(VariantDictionaryTest, aLengthWithItsTopBitSetIsNegativeAndNotLarge) {
    EXPECT_EQ(parsing("0001 04 00000080"), corruptedData("VariantDictionary anahtar uzunluğu negatif"));
    EXPECT_EQ(parsing("0001 04 ffffffff"), corruptedData("VariantDictionary anahtar uzunluğu negatif"));
    EXPECT_EQ(parsing("0001 04 01000000 61 00000080"), corruptedData("VariantDictionary değer uzunluğu negatif"));
    EXPECT_EQ(parsing("0001 04 ffffff7f"), shortData(2147483647, 0));
}

TEST(VariantDictionaryTest, refusesANumberOfTheWrongWidth) {
    EXPECT_EQ(parsing("0001 04 01000000 61 03000000 000000 00"), corruptedData("UInt32 alanı 4 bayt değil"));
    EXPECT_EQ(parsing("0001 05 01000000 61 04000000 00000000 00"), corruptedData("UInt64 alanı 8 bayt değil"));
    EXPECT_EQ(parsing("0001 08 01000000 61 00000000 00"), corruptedData("Bool alanı 1 bayt değil"));
    EXPECT_EQ(parsing("0001 08 01000000 61 02000000 0101 00"), corruptedData("Bool alanı 1 bayt değil"));
    EXPECT_EQ(parsing("0001 0c 01000000 61 05000000 0000000000 00"), corruptedData("Int32 alanı 4 bayt değil"));
    EXPECT_EQ(parsing("0001 0d 01000000 61 00000000 00"), corruptedData("Int64 alanı 8 bayt değil"));
}

TEST(VariantDictionaryTest, failsWhereAnyReadRunsOut) {
    const auto whole = fromHex(everyKind);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const auto prefix = ByteView(whole).first(size);
        const auto outcome = outcomeOf([&] { return VariantDictionary::parse(prefix); });
        EXPECT_TRUE(outcome.starts_with(corruptedData("beklenenden kısa veri ("))) << size << ": " << outcome;
    }
}

TEST(VariantDictionaryTest, replacesIllFormedTextInKeysAndValues) {
    const auto dictionary = parsed("0001 18 02000000 61ff 01000000 80 00");

    EXPECT_EQ(dictionary.keys(), Keys{"a\uFFFD"});
    EXPECT_EQ(dictionary["a\uFFFD"]->asString(), "\uFFFD");
}

TEST(VariantDictionaryTest, aRepeatedKeyKeepsItsFirstPlaceAndItsLastValue) {
    const auto dictionary = parsed(
        "0001 04 01000000 61 04000000 01000000"
        "04 01000000 62 04000000 02000000"
        "08 01000000 61 01000000 01 00");

    EXPECT_EQ(dictionary.keys(), (Keys{"a", "b"}));
    EXPECT_TRUE(valueOf<bool>(dictionary, "a"));
    EXPECT_EQ(toHex(dictionary.serialize()),
              toHex(fromHex("0001 08 01000000 61 01000000 01 04 01000000 62 04000000 02000000 00")));
}

TEST(VariantDictionaryTest, twoSpellingsOfOneTextAreOneKey) {
    VariantDictionary dictionary;
    dictionary.set("\u015F", VariantValue{std::uint32_t{1}});
    dictionary.set("s\u0327", VariantValue{std::uint32_t{2}});

    EXPECT_EQ(dictionary.keys().size(), 1u);
    EXPECT_EQ(valueOf<std::uint32_t>(dictionary, "\u015F"), 2u);
    EXPECT_EQ(valueOf<std::uint32_t>(dictionary, "s\u0327"), 2u);
    EXPECT_EQ(VariantDictionary::parse(dictionary.serialize()), dictionary);
}

TEST(VariantDictionaryTest, dropsWhatFollowsTheTerminator) {
    EXPECT_EQ(toHex(parsed("000100 0102030405").serialize()), "000100");
}

TEST(VariantDictionaryTest, readsAnyByteButZeroAsTrueAndWritesOne) {
    EXPECT_EQ(toHex(parsed("0001 08 01000000 61 01000000 02 00").serialize()),
              "000108010000006101000000"
              "0100");
    EXPECT_FALSE(valueOf<bool>(parsed("0001 08 01000000 61 01000000 00 00"), "a"));
}

TEST(VariantDictionaryTest, aNewKeyGoesLastAndAKnownOneKeepsItsPlace) {
    VariantDictionary dictionary;
    dictionary.set("$UUID", VariantValue{Bytes(16, 1)});
    dictionary.set("R", VariantValue{std::uint64_t{1}});
    dictionary.set("S", VariantValue{Bytes(32, 2)});
    dictionary.set("$UUID", VariantValue{Bytes(16, 3)});

    EXPECT_EQ(dictionary.keys(), (Keys{"$UUID", "R", "S"}));
    EXPECT_EQ(dictionary["$UUID"]->asData(), Bytes(16, 3));
}

TEST(VariantDictionaryTest, settingNothingRemovesAKey) {
    VariantDictionary dictionary;
    dictionary.set("a", VariantValue{true});
    dictionary.set("\u015F", VariantValue{false});

    dictionary.set("s\u0327", std::nullopt);
    dictionary.set("absent", std::nullopt);

    EXPECT_EQ(dictionary.keys(), Keys{"a"});
    EXPECT_EQ(dictionary["\u015F"], nullptr);
    dictionary.set("a", std::nullopt);
    EXPECT_TRUE(dictionary.isEmpty());
}

TEST(VariantDictionaryTest, equalityLooksAtOrderKindAndValue) {
    VariantDictionary ab;
    ab.set("a", VariantValue{std::uint32_t{1}});
    ab.set("b", VariantValue{std::string("\u015F")});
    VariantDictionary ba;
    ba.set("b", VariantValue{std::string("s\u0327")});
    ba.set("a", VariantValue{std::uint32_t{1}});
    auto wider = ab;
    wider.set("a", VariantValue{std::uint64_t{1}});
    auto otherSpelling = ab;
    otherSpelling.set("b", VariantValue{std::string("s\u0327")});

    EXPECT_FALSE(ab == ba);
    EXPECT_FALSE(ab == wider);
    EXPECT_TRUE(ab == otherSpelling);
    EXPECT_FALSE(ab == VariantDictionary());
}

TEST(VariantValueTest, readsNumbersAcrossWidthsAndSigns) {
    constexpr auto max32 = std::numeric_limits<std::uint32_t>::max();
    EXPECT_EQ(VariantValue{max32}.asUInt64(), max32);
    EXPECT_EQ(VariantValue{max32}.asUInt32(), max32);
    EXPECT_EQ(VariantValue{std::numeric_limits<std::uint64_t>::max()}.asUInt64(),
              std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(VariantValue{std::uint64_t{max32}}.asUInt32(), max32);
    EXPECT_EQ(VariantValue{std::uint64_t{max32} + 1}.asUInt32(), std::nullopt);
    EXPECT_EQ(VariantValue{std::int32_t{7}}.asUInt64(), 7u);
    EXPECT_EQ(VariantValue{std::int32_t{7}}.asUInt32(), 7u);
    EXPECT_EQ(VariantValue{std::int32_t{-1}}.asUInt64(), std::nullopt);
    EXPECT_EQ(VariantValue{std::int32_t{-1}}.asUInt32(), std::nullopt);
    EXPECT_EQ(VariantValue{std::int64_t{max32}}.asUInt32(), max32);
    EXPECT_EQ(VariantValue{std::int64_t{max32} + 1}.asUInt64(), std::uint64_t{max32} + 1);
    EXPECT_EQ(VariantValue{std::int64_t{max32} + 1}.asUInt32(), std::nullopt);
    EXPECT_EQ(VariantValue{std::int64_t{-1}}.asUInt64(), std::nullopt);
}

TEST(VariantValueTest, givesItsBytesAsAFileHasThem) {
    EXPECT_EQ(toHex(VariantValue{std::uint32_t{1}}.payload()), "01000000");
    EXPECT_EQ(toHex(VariantValue{std::int64_t{-2}}.payload()), "feffffffffffffff");
    EXPECT_EQ(toHex(VariantValue{true}.payload()), "01");
    EXPECT_EQ(toHex(VariantValue{false}.payload()), "00");
    EXPECT_EQ(toHex(VariantValue{std::string("ş")}.payload()), "c59f");
    EXPECT_EQ(toHex(VariantValue{Bytes{7, 8}}.payload()), "0708");
}

TEST(VariantValueTest, aTextIsNoBufferOfTheSameBytes) {
    EXPECT_FALSE(VariantValue{std::string("a")} == VariantValue{copyOf(bytesOf("a"))});
    EXPECT_FALSE(VariantValue{copyOf(bytesOf("a"))} == VariantValue{std::string("a")});
    EXPECT_FALSE(VariantValue{std::string("a")} == VariantValue{std::string("b")});
}

TEST(VariantValueTest, takesNoOtherKindForANumberATextOrABuffer) {
    for (const auto& value : {VariantValue{true}, VariantValue{std::string("1")}, VariantValue{Bytes{1}}}) {
        EXPECT_EQ(value.asUInt64(), std::nullopt);
        EXPECT_EQ(value.asUInt32(), std::nullopt);
    }
    EXPECT_EQ(VariantValue{std::string("1")}.asData(), std::nullopt);
    EXPECT_EQ(VariantValue{Bytes{1}}.asString(), std::nullopt);
    EXPECT_EQ(VariantValue{std::string("ş")}.asString(), "ş");
    EXPECT_EQ(VariantValue{Bytes{1}}.asData(), Bytes{1});
}

}  // namespace
