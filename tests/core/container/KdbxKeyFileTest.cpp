// SPDX-License-Identifier: MIT
#include "core/container/KdbxKeys.h"
#include "core/primitives/Base64.h"
#include "core/primitives/Sha2.h"
#include "tests/support/Failures.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

using KdbxKeys::KeyFileKind;

const Bytes key32 = Sha2::sha256(bytesOf("anahtar"));

KdbxKeys::KeyFileResult keyOf(std::string_view file) {
    return KdbxKeys::keyFileKey(bytesOf(file));
}

std::string reading(const std::string& file) {
    return outcomeOf([&] { return keyOf(file); });
}

std::string keyFile(const std::string& version, const std::string& data, const std::string& attributes = "") {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<KeyFile><Meta><Version>" + version +
           "</Version></Meta><Key><Data" + attributes + ">" + data + "</Data></Key></KeyFile>";
}

std::string version1(const std::string& data) {
    return keyFile("1.00", data);
}

std::string version2(const std::string& data, const std::string& attributes = "") {
    return keyFile("2.0", data, attributes);
}

void expectHashed(const std::string& file) {
    const auto result = keyOf(file);
    EXPECT_EQ(result.kind, KeyFileKind::hashed) << file;
    EXPECT_EQ(result.key, Sha2::sha256(bytesOf(file))) << file;
}

TEST(KeyFileTest, takes32BytesAsTheyStand) {
    const auto result = KdbxKeys::keyFileKey(key32);
    EXPECT_EQ(result, (KdbxKeys::KeyFileResult{key32, KeyFileKind::rawBinary32}));
    EXPECT_FALSE(result == (KdbxKeys::KeyFileResult{key32, KeyFileKind::hex64}));
}

TEST(KeyFileTest, takes64HexadecimalDigitsInEitherCase) {
    const auto digits = toHex(key32);
    std::string capitals;
    for (const char digit : digits)
        capitals += static_cast<char>(std::toupper(digit));
    for (const auto& text : {digits, capitals}) {
        const auto result = keyOf(text);
        EXPECT_EQ(result.kind, KeyFileKind::hex64);
        EXPECT_EQ(result.key, key32);
    }
}

TEST(KeyFileTest, hashesEverythingElse) {
    const auto digits = toHex(key32);
    auto foreign = digits;
    foreign[63] = 'g';
    auto highByte = digits;
    highByte[0] = '\xFF';

    expectHashed("");
    expectHashed(foreign);
    expectHashed(highByte);
    expectHashed(digits + "\n");
    expectHashed(digits.substr(0, 62));
    expectHashed("bir metin dosyası");
    expectHashed(std::string(31, 'x'));
    expectHashed(std::string(33, 'x'));
    expectHashed(std::string(100000, '\xFE'));
}

TEST(KeyFileTest, hashesXMLThatIsNoKeyFile) {
    expectHashed("<?xml version=\"1.0\"?><Other><Key><Data>AA==</Data></Key></Other>");
    expectHashed("<?xml version=\"1.0\"?><keyfile><Key><Data>AA==</Data></Key></keyfile>");
    expectHashed("<KeyFile><Key><Data>AA==</Data></Key>");
    expectHashed("<?xml");
}

TEST(KeyFileTest, reads32BytesOfXMLAsXMLUnlessTheirTailIsBroken) {
    const std::string whole = "<KeyFile><x>12345</x></KeyFile>\n";
    const std::string broken = "<KeyFile><x>12345</x></KeyFile<\n";
    ASSERT_EQ(whole.size(), 32u);
    ASSERT_EQ(broken.size(), 32u);

    EXPECT_EQ(reading(whole), corruptedData("anahtar dosyasında <Key><Data> yok"));
    EXPECT_EQ(keyOf(broken), (KdbxKeys::KeyFileResult{copyOf(bytesOf(broken)), KeyFileKind::rawBinary32}));
}

TEST(KeyFileTest, missesKeyOrData) {
    const auto expected = corruptedData("anahtar dosyasında <Key><Data> yok");
    EXPECT_EQ(reading("<KeyFile/>"), expected);
    EXPECT_EQ(reading("<KeyFile><Key/></KeyFile>"), expected);
    EXPECT_EQ(reading("<KeyFile><Key/><Key><Data>AA==</Data></Key></KeyFile>"), expected);
    EXPECT_EQ(reading("<KeyFile><Data>AA==</Data></KeyFile>"), expected);
}

TEST(KeyFileTest, looksForXMLInTheFirst256BytesAlone) {
    const auto file = version1(Base64::encode(key32));
    const auto body = file.substr(file.find("<KeyFile>"));
    const auto commented = [&](std::size_t size) { return "<!--" + std::string(size - 7, ' ') + "-->" + body; };

    EXPECT_EQ(keyOf(commented(248)).kind, KeyFileKind::xmlV1);
    expectHashed(commented(249));
    EXPECT_EQ(keyOf("<?xml version=\"1.0\"?>" + commented(1000)).kind, KeyFileKind::xmlV1);
}

TEST(KeyFileTest, aCharacterCutByTheFirst256BytesMakesAFileNotXML) {
    const auto file = version1(Base64::encode(key32));
    const auto declaration = file.substr(0, file.find("<KeyFile>"));
    const auto body = file.substr(declaration.size());
    const auto withCharacterAt = [&](std::size_t offset) {
        return declaration + "<!--" + std::string(offset - declaration.size() - 4, ' ') + "ş-->" + body;
    };

    EXPECT_EQ(keyOf(withCharacterAt(254)).kind, KeyFileKind::xmlV1);
    expectHashed(withCharacterAt(255));
    EXPECT_EQ(keyOf(withCharacterAt(256)).kind, KeyFileKind::xmlV1);
}

TEST(KeyFileVersion1Test, takes32DecodedBytesAndHashesOthers) {
    EXPECT_EQ(keyOf(version1(Base64::encode(key32))), (KdbxKeys::KeyFileResult{key32, KeyFileKind::xmlV1}));
    EXPECT_EQ(keyOf(version1(Base64::encode(Bytes(31, 0)))),
              (KdbxKeys::KeyFileResult{Sha2::sha256(Bytes(31, 0)), KeyFileKind::xmlV1}));
    EXPECT_EQ(keyOf(version1("")).key, Sha2::sha256(ByteView()));
}

TEST(KeyFileVersion1Test, removesWhiteSpaceOfEveryKind) {
    auto text = Base64::encode(key32);
    text.insert(7, "\u00A0");
    text.insert(20, "\r\n\t ");
    text.insert(30, "\u2028\u3000");
    EXPECT_EQ(keyOf(version1(" \n" + text + "\n ")).key, key32);
}

TEST(KeyFileVersion1Test, refusesWhatIsNotStrictBase64) {
    const auto expected = corruptedData("v1 anahtar dosyası base64 değil");
    EXPECT_EQ(reading(version1("AA=")), expected);
    EXPECT_EQ(reading(version1("AA==-")), expected);
    EXPECT_EQ(reading(version1("ş")), expected);
}

TEST(KeyFileVersion1Test, isWhatEveryVersionIsThatDoesNotBeginWith2) {
    for (const auto* version : {"", "1.0", "1.00", "3.0", "v2", "02", "-2"})
        EXPECT_EQ(keyOf(keyFile(version, Base64::encode(key32))).kind, KeyFileKind::xmlV1) << version;
    EXPECT_EQ(keyOf("<KeyFile><Key><Data>AA==</Data></Key></KeyFile>").kind, KeyFileKind::xmlV1);
    EXPECT_EQ(keyOf("<KeyFile><Meta/><Key><Data>AA==</Data></Key></KeyFile>").kind, KeyFileKind::xmlV1);
}

TEST(KeyFileVersion2Test, takesTheDecodedBytesOfAnySize) {
    EXPECT_EQ(keyOf(version2(toHex(Bytes(16, 5)))), (KdbxKeys::KeyFileResult{Bytes(16, 5), KeyFileKind::xmlV2}));
    EXPECT_EQ(keyOf(keyFile(" \n2", "Aa")).key, fromHex("aa"));
    EXPECT_EQ(keyOf(keyFile("2x", toHex(key32))).kind, KeyFileKind::xmlV2);
    EXPECT_EQ(keyOf(version2("\n 00 01\t02\u00A003\n")).key, fromHex("00010203"));
}

TEST(KeyFileVersion2Test, refusesWhatIsNotHexadecimalOrEmpty) {
    const auto expected = corruptedData("v2 anahtar dosyası onaltılık değil");
    EXPECT_EQ(reading(version2("012")), expected);
    EXPECT_EQ(reading(version2("0g")), expected);
    EXPECT_EQ(reading(version2("")), expected);
    EXPECT_EQ(reading(version2(" \n")), expected);
}

TEST(KeyFileVersion2Test, comparesTheHashIgnoringCaseAndWhiteSpace) {
    const auto data = "000102030405060708090a0b0c0d0e0f";
    EXPECT_EQ(keyOf(version2(data, " Hash=\"BE45CB26\"")).kind, KeyFileKind::xmlV2);
    EXPECT_EQ(keyOf(version2(data, " Hash=\" be45 Cb26 \"")).kind, KeyFileKind::xmlV2);
}

TEST(KeyFileVersion2Test, refusesAHashThatDiffers) {
    const auto expected = corruptedData("anahtar dosyası bütünlük kontrolünden geçemedi");
    const auto data = "000102030405060708090a0b0c0d0e0f";
    for (const auto* hash : {"BE45CB27", "BE45CB", "BE45CB2600", "", "26CB45BE"})
        EXPECT_EQ(reading(version2(data, std::string(" Hash=\"") + hash + "\"")), expected) << hash;
}

TEST(KeyFileVersion2Test, judgesTheDigitsBeforeTheHash) {
    EXPECT_EQ(reading(version2("0", " Hash=\"00\"")), corruptedData("v2 anahtar dosyası onaltılık değil"));
}

TEST(KeyFileVersion2Test, theVersionOfTheFirstMetaCounts) {
    const std::string first = "<KeyFile><Meta><Version>2.0</Version><Version>1.0</Version></Meta>";
    const std::string rest = "<Meta><Version>1.0</Version></Meta><Key><Data>AAAA</Data></Key></KeyFile>";
    EXPECT_EQ(keyOf(first + rest), (KdbxKeys::KeyFileResult{fromHex("aaaa"), KeyFileKind::xmlV2}));
}

}  // namespace
