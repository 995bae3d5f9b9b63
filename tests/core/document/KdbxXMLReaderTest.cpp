// SPDX-License-Identifier: MIT
#include "DocumentTesting.h"
#include "core/primitives/Base64.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace DocumentTesting;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr double y2020 = 1577934245;  // 2020-01-02T03:04:05Z
constexpr double y2021 = 1609556645;  // 2021-01-02T03:04:05Z

// The bytes 0 to 15.
constexpr auto someUUID = "AAECAwQFBgcICQoLDA0ODw==";
constexpr auto someUUIDText = "00010203-0405-0607-0809-0A0B0C0D0E0F";

bool isNow(Timestamp date) {
    return std::abs(Timestamp::now().seconds - date.seconds) < 60;
}

// --- Structure ---

TEST(KdbxXMLReaderTest, eachStructuralFaultHasItsWords) {
    EXPECT_EQ(failureOf(""), "XML çözümlenemedi: belge çözümlenemedi");
    EXPECT_EQ(failureOf("<KeePassFile><Root><Group>"), "XML çözümlenemedi: belge çözümlenemedi");
    EXPECT_EQ(failureOf("<Root><Group/></Root>"), "XML çözümlenemedi: kök öğe <KeePassFile> değil (<Root>)");
    EXPECT_EQ(failureOf("<ş:x/>"), "XML çözümlenemedi: kök öğe <KeePassFile> değil (<ş:x>)");
    EXPECT_EQ(failureOf("<KeePassFile><Meta/></KeePassFile>"), "XML çözümlenemedi: <Root> yok");
    EXPECT_EQ(failureOf("<KeePassFile><Root><Entry/></Root></KeePassFile>"),
              "XML çözümlenemedi: <Root> altında <Group> yok");
    EXPECT_EQ(failureOf("<KeePassFile><Root/><Root><Group/></Root></KeePassFile>"),
              "XML çözümlenemedi: <Root> altında <Group> yok");
    EXPECT_EQ(failureOf("<KeePassFile><Root><Group/></Root></KeePassFile>"), "none");
}

TEST(KdbxXMLReaderTest, namesAreTakenUpToCanonicalEquivalence) {
    EXPECT_EQ(failureOf("<\u212AeePassFile><Root><Group/></Root></\u212AeePassFile>"), "none");
    EXPECT_EQ(parseEntry("<String><\u212Aey>Title</\u212Aey><Value>x</Value></String>").title, "x");
}

TEST(KdbxXMLReaderTest, withoutMetaTheStartValuesStand) {
    EXPECT_EQ(parse("<KeePassFile><Root><Group/></Root></KeePassFile>").meta, KdbxMeta());
    EXPECT_EQ(parseMeta(""), KdbxMeta());
}

TEST(KdbxXMLReaderTest, onlyTheFirstMetaAndTheFirstRootCount) {
    const auto document = parse(
        "<KeePassFile><Other/><Meta><Generator>1</Generator></Meta><Meta><Generator>2</Generator></Meta>"
        "<Root><Group><Name>a</Name></Group></Root><Root><Group><Name>b</Name></Group></Root></KeePassFile>");

    EXPECT_EQ(document.meta.generator, "1");
    EXPECT_EQ(document.root.name, "a");
    EXPECT_THAT(document.root.unknownXML, IsEmpty());
}

TEST(KdbxXMLReaderTest, furtherGroupsUnderRootDisappear) {
    const auto document =
        parse("<KeePassFile><Root><Group><Name>a</Name></Group><Group><Name>b</Name></Group></Root></KeePassFile>");

    EXPECT_EQ(document.root.name, "a");
    EXPECT_TRUE(document.root.groups.empty());
    EXPECT_THAT(document.root.unknownXML, IsEmpty());
}

// --- Meta ---

TEST(KdbxXMLReaderTest, metaTextsAreTrimmed) {
    const auto meta = parseMeta(
        "<Generator> g\n</Generator><DatabaseName>\t Ev </DatabaseName>"
        "<DatabaseDescription> a b </DatabaseDescription><DefaultUserName>\u00A0u </DefaultUserName>");

    EXPECT_EQ(meta.generator, "g");
    EXPECT_EQ(meta.databaseName, "Ev");
    EXPECT_EQ(meta.databaseDescription, "a b");
    EXPECT_EQ(meta.defaultUsername, "u");
}

TEST(KdbxXMLReaderTest, ofRepeatedMetaElementsTheLastStands) {
    EXPECT_EQ(parseMeta("<DatabaseName>a</DatabaseName><DatabaseName/>").databaseName, "");
}

TEST(KdbxXMLReaderTest, numbersOfMetaAreReadWholeOrNotAtAll) {
    EXPECT_EQ(parseMeta("<HistoryMaxItems> -1 </HistoryMaxItems>").historyMaxItems, -1);
    EXPECT_EQ(parseMeta("<HistoryMaxItems>+7</HistoryMaxItems>").historyMaxItems, 7);
    EXPECT_EQ(parseMeta("<HistoryMaxItems>9223372036854775807</HistoryMaxItems>").historyMaxItems, INT64_MAX);
    EXPECT_EQ(parseMeta("<HistoryMaxItems>-9223372036854775808</HistoryMaxItems>").historyMaxItems, INT64_MIN);
    for (const auto* text : {"", "x", "1x", "1 2", "+", "-", "+-1", "--1", "0x10", "1.0", "9223372036854775808", "١"}) {
        const auto bad = std::string(text);
        EXPECT_EQ(parseMeta("<HistoryMaxItems>5</HistoryMaxItems><HistoryMaxItems>" + bad + "</HistoryMaxItems>")
                      .historyMaxItems,
                  10)
            << text;
        EXPECT_EQ(
            parseMeta("<HistoryMaxSize>5</HistoryMaxSize><HistoryMaxSize>" + bad + "</HistoryMaxSize>").historyMaxSize,
            6291456)
            << text;
    }
    EXPECT_EQ(parseMeta("<HistoryMaxSize>5</HistoryMaxSize>").historyMaxSize, 5);
}

TEST(KdbxXMLReaderTest, anUnreadableRecycleBinFlagIsTrue) {
    EXPECT_FALSE(parseMeta("<RecycleBinEnabled> False </RecycleBinEnabled>").recycleBinEnabled);
    EXPECT_TRUE(parseMeta("<RecycleBinEnabled>False</RecycleBinEnabled><RecycleBinEnabled>?</RecycleBinEnabled>")
                    .recycleBinEnabled);
}

TEST(KdbxXMLReaderTest, theRecycleBinStaysWhereItsIdentifierIsZeroOrNone) {
    const auto bin = "<RecycleBinUUID> " + std::string(someUUID) + "\n</RecycleBinUUID>";
    EXPECT_EQ(parseMeta(bin).recycleBinUUID, UUID::fromText(someUUIDText));
    EXPECT_EQ(parseMeta("<RecycleBinUUID>AAAAAAAAAAAAAAAAAAAAAA==</RecycleBinUUID>").recycleBinUUID, std::nullopt);
    for (const auto* text : {"AAAAAAAAAAAAAAAAAAAAAA==", "AAEC", "", "AAECAwQFBgcICQ oLDA0ODw==", "?"})
        EXPECT_EQ(parseMeta(bin + "<RecycleBinUUID>" + text + "</RecycleBinUUID>").recycleBinUUID,
                  UUID::fromText(someUUIDText))
            << text;
}

TEST(KdbxXMLReaderTest, theHeaderHashIsThereIfItIsBase64) {
    const auto hashOf = [](const std::string& meta) {
        return parse(document({.meta = meta, .group = "", .root = ""})).headerHash;
    };
    EXPECT_EQ(hashOf(""), std::nullopt);
    EXPECT_EQ(hashOf("<HeaderHash> Zm9v </HeaderHash>"), copyOf(bytesOf("foo")));
    EXPECT_EQ(hashOf("<HeaderHash/>"), Bytes());
    EXPECT_EQ(hashOf("<HeaderHash>Zm9v</HeaderHash><HeaderHash>?</HeaderHash>"), std::nullopt);
}

// --- Groups ---

TEST(KdbxXMLReaderTest, aGroupThatSaysNothingHasItsStartValues) {
    const auto group = parseGroup("");

    EXPECT_FALSE(group.id.isZero());
    EXPECT_NE(group.id, parseGroup("").id);
    EXPECT_EQ(group.name, "");
    EXPECT_EQ(group.iconID, 48);
    EXPECT_TRUE(group.isExpanded);
    EXPECT_EQ(group.defaultAutoTypeSequence, std::nullopt);
    EXPECT_TRUE(isNow(group.created));
    EXPECT_TRUE(isNow(group.modified));
}

TEST(KdbxXMLReaderTest, aGroupIsReadFieldByField) {
    const auto group = parseGroup(
        "<UUID> " + std::string(someUUID) +
        " </UUID><Name> Ev \n</Name><Notes> n </Notes><IconID> 7 </IconID><IsExpanded> false </IsExpanded>"
        "<DefaultAutoTypeSequence> {TAB} </DefaultAutoTypeSequence><Times><CreationTime> 2020-01-02T03:04:05Z "
        "</CreationTime><LastModificationTime>2021-01-02T03:04:05Z</LastModificationTime></Times>"
        "<Group><Name>b</Name></Group><Entry><Tags>x</Tags></Entry><Group><Name>c</Name></Group>");

    EXPECT_EQ(group.id.text(), someUUIDText);
    EXPECT_EQ(group.name, " Ev \n");
    EXPECT_EQ(group.notes, " n ");
    EXPECT_EQ(group.iconID, 7);
    EXPECT_FALSE(group.isExpanded);
    EXPECT_EQ(group.defaultAutoTypeSequence, " {TAB} ");
    EXPECT_EQ(group.created.seconds, y2020);
    EXPECT_EQ(group.modified.seconds, y2021);
    ASSERT_EQ(group.groups.size(), 2U);
    EXPECT_EQ(group.groups[0].name, "b");
    EXPECT_EQ(group.groups[1].name, "c");
    EXPECT_EQ(group.entries.size(), 1U);
    EXPECT_THAT(group.unknownXML, IsEmpty());
}

TEST(KdbxXMLReaderTest, badValuesOfAGroupFallBack) {
    const auto group = parseGroup(
        "<UUID>AAEC</UUID><IconID>x</IconID><IsExpanded>null</IsExpanded><DefaultAutoTypeSequence/>"
        "<Times><CreationTime>dün</CreationTime></Times>");

    EXPECT_FALSE(group.id.isZero());
    EXPECT_EQ(group.iconID, 48);
    EXPECT_TRUE(group.isExpanded);
    EXPECT_EQ(group.defaultAutoTypeSequence, std::nullopt);
    EXPECT_TRUE(isNow(group.created));
}

TEST(KdbxXMLReaderTest, aZeroIdentifierIsAnIdentifier) {
    EXPECT_TRUE(parseGroup("<UUID>AAAAAAAAAAAAAAAAAAAAAA==</UUID>").id.isZero());
}

// --- Entries ---

TEST(KdbxXMLReaderTest, anEntryThatSaysNothingHasItsStartValues) {
    const auto entry = parseEntry("");

    EXPECT_FALSE(entry.id.isZero());
    EXPECT_TRUE(entry.password.isEmpty());
    EXPECT_EQ(entry.iconID, 0);
    EXPECT_TRUE(entry.autoTypeEnabled);
    EXPECT_FALSE(entry.expires);
    EXPECT_EQ(entry.expiryTime, std::nullopt);
    EXPECT_TRUE(isNow(entry.created));
    EXPECT_TRUE(isNow(entry.modified));
    EXPECT_TRUE(isNow(entry.accessed));
}

TEST(KdbxXMLReaderTest, anEntryIsReadFieldByField) {
    const auto entry = parseEntry(
        "<UUID>" + std::string(someUUID) +
        "</UUID><IconID>3</IconID><Tags>a; b, c</Tags><Times><CreationTime>2020-01-02T03:04:05Z</CreationTime>"
        "<LastModificationTime>2020-01-02T03:04:05Z</LastModificationTime>"
        "<LastAccessTime>2021-01-02T03:04:05Z</LastAccessTime><ExpiryTime>2021-01-02T03:04:05.500Z</ExpiryTime>"
        "<Expires> TRUE </Expires><UsageCount>4</UsageCount></Times>"
        "<String><Key>Title</Key><Value> t </Value></String><String><Key>UserName</Key><Value>u</Value></String>"
        "<String><Key>Password</Key><Value>p</Value></String><String><Key>URL</Key><Value>l</Value></String>"
        "<String><Key>Notes</Key><Value>n\n</Value></String><String><Key>title</Key><Value>x</Value></String>");

    EXPECT_EQ(entry.id.text(), someUUIDText);
    EXPECT_EQ(entry.iconID, 3);
    EXPECT_THAT(entry.tags, ElementsAre("a", "b", "c"));
    EXPECT_EQ(entry.created.seconds, y2020);
    EXPECT_EQ(entry.modified.seconds, y2020);
    EXPECT_EQ(entry.accessed.seconds, y2021);
    EXPECT_EQ(entry.expiryTime->seconds, y2021 + 0.5);
    EXPECT_TRUE(entry.expires);
    EXPECT_EQ(entry.title, " t ");
    EXPECT_EQ(entry.username, "u");
    EXPECT_EQ(entry.password.value(), "p");
    EXPECT_EQ(entry.url, "l");
    EXPECT_EQ(entry.notes, "n\n");
    EXPECT_THAT(entry.customFields, ElementsAre(Pair("title", "x")));
    EXPECT_THAT(entry.unknownXML, IsEmpty());
}

TEST(KdbxXMLReaderTest, withoutALastAccessTheLastChangeIsTaken) {
    const auto entry = parseEntry("<Times><LastModificationTime>2020-01-02T03:04:05Z</LastModificationTime></Times>");
    EXPECT_EQ(entry.modified.seconds, y2020);
    EXPECT_EQ(entry.accessed.seconds, y2020);
}

TEST(KdbxXMLReaderTest, badTimesCountAsAbsent) {
    const auto entry = parseEntry(
        "<Times><CreationTime>2020-01-02T03:04:05Z</CreationTime><CreationTime>?</CreationTime>"
        "<ExpiryTime>2020-01-02T03:04:05Z</ExpiryTime><Expires>True</Expires></Times>"
        "<Times><Expires>belki</Expires></Times>");

    EXPECT_TRUE(isNow(entry.created));
    EXPECT_EQ(entry.expiryTime, std::nullopt);
    EXPECT_FALSE(entry.expires);
}

TEST(KdbxXMLReaderTest, theFormOfATimeDoesNotDependOnTheVersion) {
    const auto xml = documentOfEntry(
        "<Times><CreationTime>AAAAAAAAAAA=</CreationTime>"
        "<LastModificationTime>2020-01-02T03:04:05Z</LastModificationTime></Times>");
    for (const auto version : {KdbxFormatVersion{3, 1}, KdbxFormatVersion{4, 0}}) {
        NullStreamCipher stream;
        const auto entry = KdbxXML::parse(bytesOf(xml), stream, version, {}).root.entries[0];
        EXPECT_EQ(entry.created.seconds, -62135596800.0);
        EXPECT_EQ(entry.modified.seconds, y2020);
    }
}

TEST(KdbxXMLReaderTest, stringsWithoutKeyOrValueAreEmptyThere) {
    const auto entry =
        parseEntry("<String><Value>v</Value></String><String><Key>k</Key></String><String><Key>Title</Key></String>");
    EXPECT_THAT(entry.customFields, ElementsAre(Pair("", "v"), Pair("k", "")));
}

TEST(KdbxXMLReaderTest, aRepeatedKeyOverwritesAndStaysProtected) {
    const auto entry = parseEntry(
        "<String><Key>s\u0327</Key><Value Protected='True'>YQ==</Value></String>"
        "<String><Key>\u015F</Key><Value>b</Value></String>"
        "<String><Key>Title</Key><Value>1</Value></String><String><Key>Title</Key><Value>2</Value></String>");

    ASSERT_EQ(entry.customFields.size(), 1U);
    EXPECT_EQ(entry.customFields.find("ş")->second, "b");
    EXPECT_TRUE(entry.protectedCustomFields.contains("ş"));
    EXPECT_EQ(entry.title, "2");
}

TEST(KdbxXMLReaderTest, standardStringsForgetTheirMark) {
    const auto entry = parseEntry("<String><Key>Notes</Key><Value Protected='True'>YQ==</Value></String>");
    EXPECT_EQ(entry.notes, "a");
    EXPECT_THAT(entry.protectedCustomFields, IsEmpty());
}

TEST(KdbxXMLReaderTest, autoTypeIsReadFieldByField) {
    const auto entry = parseEntry(
        "<AutoType><Enabled> False </Enabled><DataTransferObfuscation>1</DataTransferObfuscation>"
        "<DefaultSequence> {USERNAME} </DefaultSequence>"
        "<Association><Window> w* </Window><KeystrokeSequence>{TAB}</KeystrokeSequence></Association>"
        "<Association><Window/><KeystrokeSequence/></Association><Association/></AutoType>");

    EXPECT_FALSE(entry.autoTypeEnabled);
    EXPECT_EQ(entry.autoTypeSequence, " {USERNAME} ");
    ASSERT_EQ(entry.autoTypeWindowAssociations.size(), 3U);
    EXPECT_EQ(entry.autoTypeWindowAssociations[0].window, " w* ");
    EXPECT_EQ(entry.autoTypeWindowAssociations[0].sequence, "{TAB}");
    EXPECT_EQ(entry.autoTypeWindowAssociations[1].sequence, std::nullopt);
    EXPECT_EQ(entry.autoTypeWindowAssociations[2].window, "");
    EXPECT_EQ(entry.autoTypeWindowAssociations[2].sequence, std::nullopt);
    EXPECT_THAT(entry.unknownXML, IsEmpty());
}

TEST(KdbxXMLReaderTest, anEnabledThatCannotBeReadIsTrueAndAnEmptySequenceIsNone) {
    const auto entry = parseEntry(
        "<AutoType><Enabled>False</Enabled><Enabled>null</Enabled>"
        "<DefaultSequence>x</DefaultSequence><DefaultSequence/></AutoType>");
    EXPECT_TRUE(entry.autoTypeEnabled);
    EXPECT_EQ(entry.autoTypeSequence, std::nullopt);
}

TEST(KdbxXMLReaderTest, historyItemsMayHaveAHistory) {
    const auto entry = parseEntry(
        "<History><Entry><IconID>1</IconID><History><Entry><IconID>2</IconID></Entry></History></Entry><Other/>"
        "</History><History><Entry><IconID>3</IconID></Entry></History>");

    ASSERT_EQ(entry.historyItems.size(), 2U);
    EXPECT_EQ(entry.historyItems[0].iconID, 1);
    EXPECT_EQ(entry.historyItems[0].historyItems[0].iconID, 2);
    EXPECT_EQ(entry.historyItems[1].iconID, 3);
    EXPECT_THAT(entry.unknownXML, IsEmpty());
}

// --- Foreign elements ---

TEST(KdbxXMLReaderTest, foreignChildrenStayWithTheirEntryAndGroup) {
    const auto group = parseGroup(
        "<CustomIconUUID a='1'>x</CustomIconUUID><Entry><OverrideURL/><Binary><Key>k</Key><Value Ref='0'/></Binary>"
        "</Entry><Foo> <Group>a</Group> <Entry>b</Entry> </Foo>");

    EXPECT_THAT(group.unknownXML, ElementsAre("<CustomIconUUID a=\"1\">x</CustomIconUUID>",
                                              "<Foo><Group>a</Group><Entry>b</Entry></Foo>"));
    EXPECT_THAT(group.entries[0].unknownXML,
                ElementsAre("<OverrideURL/>", "<Binary><Key>k</Key><Value Ref=\"0\"/></Binary>"));
}

TEST(KdbxXMLReaderTest, foreignSecretsAreKeptInTheClearAndTheStreamStaysInStep) {
    const auto values = masked({"meta", "atılan", "yabancı", "kullanım", "parola"});
    const auto value = [&](std::size_t i) { return "<V Protected='True'>" + values[i] + "</V>"; };
    CountingStream stream;

    const auto read = KdbxXML::parse(bytesOf("<KeePassFile><Meta><Foo>" + value(0) + "</Foo></Meta><Ignored>" +
                                             value(1) + "</Ignored><Root><Group>" + value(2) + "<Entry><Times>" +
                                             value(3) + "</Times><String><Key>Password</Key><Value Protected='True'>" +
                                             values[4] + "</Value></String></Entry></Group></Root></KeePassFile>"),
                                     stream, {4, 1}, {});

    EXPECT_EQ(read.root.entries[0].password.value(), "parola");
    EXPECT_THAT(read.root.unknownXML,
                ElementsAre("<V Protected=\"True\">yabancı</V>",
                            "<BrenvikPreservedMeta><Foo><V Protected=\"True\">meta</V></Foo></BrenvikPreservedMeta>"));
}

TEST(KdbxXMLReaderTest, wrappersAreMadeInOrderAndOnlyWithContent) {
    EXPECT_THAT(parseGroup("").unknownXML, IsEmpty());

    const auto read = parse(
        document({.meta = "<Generator/><CustomData/><Binaries/>", .group = "<Own/>", .root = "<DeletedObjects/><X/>"}),
        {{.flags = 1, .data = copyOf(bytesOf("foo"))}, {.flags = 0, .data = {}}});

    EXPECT_THAT(read.root.unknownXML,
                ElementsAre("<Own/>", "<BrenvikPreservedMeta><CustomData/><Binaries/></BrenvikPreservedMeta>",
                            "<BrenvikPreservedRoot><DeletedObjects/><X/></BrenvikPreservedRoot>",
                            "<BrenvikPreservedBinaries><Binary Flags=\"1\">Zm9v</Binary><Binary Flags=\"0\"></Binary>"
                            "</BrenvikPreservedBinaries>"));
}

TEST(KdbxXMLReaderTest, textBesideChildElementsIsReadOnlyWhereAValueIsAskedFor) {
    EXPECT_EQ(parseGroup("<Name>a<x/>b</Name>").name, "ab");
    EXPECT_THAT(parseGroup("<F>a<x>b</x>c</F>").unknownXML, ElementsAre("<F><x>b</x></F>"));
    EXPECT_THAT(parseGroup("<F>a<!-- c -->b</F>").unknownXML, ElementsAre("<F>ab</F>"));
}

}  // namespace
