// SPDX-License-Identifier: MIT
#include "core/document/KdbxXMLWriter.h"

#include "DocumentTesting.h"
#include "core/document/KdbxDate.h"
#include "core/primitives/Base64.h"

#include <gtest/gtest.h>

namespace {

using namespace DocumentTesting;

constexpr double y2020 = 1577934245;  // 2020-01-02T03:04:05Z
constexpr double y2021 = 1609556645;  // 2021-01-02T03:04:05Z
constexpr auto zeroUUID = "AAAAAAAAAAAAAAAAAAAAAA==";

std::string base64Of(std::string_view text) {
    return Base64::encode(bytesOf(text));
}

KdbxEntry emptyEntry() {
    KdbxEntry entry;
    entry.id = UUID();
    entry.created = {y2020};
    entry.modified = {y2021};
    entry.accessed = {y2021 + 1};
    return entry;
}

KdbxGroup emptyGroup() {
    KdbxGroup group;
    group.id = UUID();
    group.created = {y2020};
    group.modified = {y2021};
    return group;
}

KdbxGroup groupOf(KdbxEntry entry) {
    auto group = emptyGroup();
    group.entries.append(std::move(entry));
    return group;
}

/// The element `Entry` of a vault that has one.
std::string writtenEntry(KdbxEntry entry, std::uint16_t major = 3) {
    return between(written(database({}, groupOf(std::move(entry)), major)), "<Entry>", "</Entry></Group>");
}

std::string writtenWith(const std::string& preservedMeta, KdbxEntry entry) {
    auto group = groupOf(std::move(entry));
    group.unknownXML = {"<BrenvikPreservedMeta>" + preservedMeta + "</BrenvikPreservedMeta>"};
    return written(database({}, std::move(group)));
}

// --- The whole ---

TEST(KdbxXMLWriterTest, anEmptyVaultIsWrittenByteForByte) {
    EXPECT_EQ(written(database({}, emptyGroup(), 3)),
              "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?><KeePassFile><Meta>"
              "<Generator>Brenvik</Generator><DatabaseName>Brenvik Database</DatabaseName><DatabaseDescription/>"
              "<DefaultUserName/><MemoryProtection><ProtectTitle>False</ProtectTitle>"
              "<ProtectUserName>False</ProtectUserName><ProtectPassword>True</ProtectPassword>"
              "<ProtectURL>False</ProtectURL><ProtectNotes>False</ProtectNotes></MemoryProtection>"
              "<RecycleBinEnabled>True</RecycleBinEnabled><RecycleBinUUID>AAAAAAAAAAAAAAAAAAAAAA==</RecycleBinUUID>"
              "<HistoryMaxItems>10</HistoryMaxItems><HistoryMaxSize>6291456</HistoryMaxSize></Meta><Root><Group>"
              "<UUID>AAAAAAAAAAAAAAAAAAAAAA==</UUID><Name/><Notes/><IconID>48</IconID><Times>"
              "<CreationTime>2020-01-02T03:04:05Z</CreationTime>"
              "<LastModificationTime>2021-01-02T03:04:05Z</LastModificationTime>"
              "<LastAccessTime>2021-01-02T03:04:05Z</LastAccessTime><ExpiryTime>2021-01-02T03:04:05Z</ExpiryTime>"
              "<Expires>False</Expires><UsageCount>0</UsageCount>"
              "<LocationChanged>2020-01-02T03:04:05Z</LocationChanged></Times><IsExpanded>True</IsExpanded>"
              "<DefaultAutoTypeSequence/></Group></Root></KeePassFile>");
}

TEST(KdbxXMLWriterTest, anEmptyEntryIsWrittenByteForByte) {
    EXPECT_EQ(writtenEntry(emptyEntry()),
              "<Entry><UUID>AAAAAAAAAAAAAAAAAAAAAA==</UUID><IconID>0</IconID><ForegroundColor/><BackgroundColor/>"
              "<OverrideURL/><Tags/><Times><CreationTime>2020-01-02T03:04:05Z</CreationTime>"
              "<LastModificationTime>2021-01-02T03:04:05Z</LastModificationTime>"
              "<LastAccessTime>2021-01-02T03:04:06Z</LastAccessTime><ExpiryTime>2021-01-02T03:04:05Z</ExpiryTime>"
              "<Expires>False</Expires><UsageCount>0</UsageCount>"
              "<LocationChanged>2020-01-02T03:04:05Z</LocationChanged></Times>"
              "<String><Key>Title</Key><Value/></String><String><Key>UserName</Key><Value/></String>"
              "<String><Key>Password</Key><Value Protected=\"True\"></Value></String>"
              "<String><Key>URL</Key><Value/></String><String><Key>Notes</Key><Value/></String>"
              "<AutoType><Enabled>True</Enabled><DataTransferObfuscation>0</DataTransferObfuscation><DefaultSequence/>"
              "</AutoType></Entry></Group>");
}

TEST(KdbxXMLWriterTest, aFullEntryIsWrittenByteForByte) {
    auto entry = emptyEntry();
    entry.id = UUID::fromText("00010203-0405-0607-0809-0A0B0C0D0E0F").value();
    entry.iconID = -3;
    entry.title = "<t>";
    entry.username = "u";
    entry.password = SecureString("p&");
    entry.url = "l";
    entry.notes = " n\n";
    entry.customFields = {{"b", "2"}, {"a", "1"}, {"", "0"}, {"Şifre", "3"}};
    entry.protectedCustomFields = {"a", "yok"};
    entry.tags = {"x", "y;z"};
    entry.autoTypeEnabled = false;
    entry.autoTypeSequence = "{TAB}";
    entry.autoTypeWindowAssociations = {
        {.window = "w", .sequence = "s"}, {.window = "", .sequence = std::nullopt}, {.window = "v", .sequence = ""}};
    entry.expires = true;
    entry.expiryTime = Timestamp{y2020};
    entry.unknownXML = {"<Foo b='2' a='1'><V Protected='TRUE'>g&amp;</V></Foo>", "<broken>",
                        "<OverrideURL>o</OverrideURL>"};
    auto item = emptyEntry();
    item.historyItems.append(emptyEntry());
    item.title = "eski";
    entry.historyItems.append(item);

    EXPECT_EQ(
        writtenEntry(entry),
        "<Entry><UUID>AAECAwQFBgcICQoLDA0ODw==</UUID><IconID>-3</IconID><ForegroundColor/><BackgroundColor/>"
        "<OverrideURL/><Tags>x;y;z</Tags><Times><CreationTime>2020-01-02T03:04:05Z</CreationTime>"
        "<LastModificationTime>2021-01-02T03:04:05Z</LastModificationTime>"
        "<LastAccessTime>2021-01-02T03:04:06Z</LastAccessTime><ExpiryTime>2020-01-02T03:04:05Z</ExpiryTime>"
        "<Expires>True</Expires><UsageCount>0</UsageCount><LocationChanged>2020-01-02T03:04:05Z</LocationChanged>"
        "</Times><String><Key>Title</Key><Value>&lt;t&gt;</Value></String>"
        "<String><Key>UserName</Key><Value>u</Value></String>"
        "<String><Key>Password</Key><Value Protected=\"True\">" +
            base64Of("p&") +
            "</Value></String><String><Key>URL</Key><Value>l</Value></String>"
            "<String><Key>Notes</Key><Value> n\n</Value></String><String><Key/><Value>0</Value></String>"
            "<String><Key>a</Key><Value Protected=\"True\">" +
            base64Of("1") +
            "</Value></String><String><Key>b</Key><Value>2</Value></String>"
            "<String><Key>Şifre</Key><Value>3</Value></String><AutoType><Enabled>False</Enabled>"
            "<DataTransferObfuscation>0</DataTransferObfuscation><DefaultSequence>{TAB}</DefaultSequence>"
            "<Association><Window>w</Window><KeystrokeSequence>s</KeystrokeSequence></Association>"
            "<Association><Window/><KeystrokeSequence/></Association>"
            "<Association><Window>v</Window><KeystrokeSequence/></Association></AutoType>"
            "<Foo a=\"1\" b=\"2\"><V Protected=\"True\">" +
            base64Of("g&") + "</V></Foo><OverrideURL>o</OverrideURL><History>" +
            [] {
                auto history = emptyEntry();
                history.title = "eski";
                auto text = writtenEntry(history);
                return text.substr(0, text.size() - std::string_view("</Group>").size());
            }() +
            "</History></Entry></Group>");
}

TEST(KdbxXMLWriterTest, groupsWriteForeignThenEntriesThenSubgroups) {
    auto group = emptyGroup();
    group.name = "Ev";
    group.notes = "n";
    group.iconID = 7;
    group.isExpanded = false;
    group.defaultAutoTypeSequence = "{ENTER}";
    group.unknownXML = {"<Foo/>"};
    group.groups.append(emptyGroup());
    group.entries.append(emptyEntry());
    const auto text = written(database({}, group));

    EXPECT_NE(text.find("<Name>Ev</Name><Notes>n</Notes><IconID>7</IconID><Times>"), std::string::npos);
    EXPECT_NE(text.find("</Times><IsExpanded>False</IsExpanded><DefaultAutoTypeSequence>{ENTER}"
                        "</DefaultAutoTypeSequence><Foo/><Entry>"),
              std::string::npos);
    EXPECT_NE(text.find("</Entry><Group>"), std::string::npos);
    group.defaultAutoTypeSequence = "";
    EXPECT_NE(written(database({}, group)).find("<DefaultAutoTypeSequence/><Foo/>"), std::string::npos);
}

TEST(KdbxXMLWriterTest, metaIsWrittenFromTheModel) {
    KdbxMeta meta;
    meta.generator = "g";
    meta.databaseName = "a & b";
    meta.databaseDescription = "d";
    meta.defaultUsername = "u";
    meta.recycleBinEnabled = false;
    meta.recycleBinUUID = UUID::fromText("00010203-0405-0607-0809-0A0B0C0D0E0F");
    meta.historyMaxItems = -1;
    meta.historyMaxSize = INT64_MIN;
    const auto text = written(database(meta, emptyGroup()));

    EXPECT_NE(text.find("<Generator>g</Generator><DatabaseName>a &amp; b</DatabaseName><DatabaseDescription>d"
                        "</DatabaseDescription><DefaultUserName>u</DefaultUserName><MemoryProtection>"),
              std::string::npos);
    EXPECT_NE(text.find("</MemoryProtection><RecycleBinEnabled>False</RecycleBinEnabled>"
                        "<RecycleBinUUID>AAECAwQFBgcICQoLDA0ODw==</RecycleBinUUID>"
                        "<HistoryMaxItems>-1</HistoryMaxItems><HistoryMaxSize>-9223372036854775808</HistoryMaxSize>"
                        "</Meta>"),
              std::string::npos);
}

TEST(KdbxXMLWriterTest, theHeaderHashIsOfOldDocumentsAlone) {
    const auto hash = copyOf(bytesOf("foo"));
    EXPECT_NE(
        written(database({}, emptyGroup(), 3), hash).find("</Generator><HeaderHash>Zm9v</HeaderHash><DatabaseName>"),
        std::string::npos);
    EXPECT_NE(written(database({}, emptyGroup(), 3), Bytes()).find("<HeaderHash></HeaderHash>"), std::string::npos);
    EXPECT_EQ(written(database({}, emptyGroup(), 3)).find("HeaderHash"), std::string::npos);
    EXPECT_EQ(written(database({}, emptyGroup(), 4), hash).find("HeaderHash"), std::string::npos);
}

TEST(KdbxXMLWriterTest, datesHaveTheFormOfTheVersion) {
    EXPECT_NE(writtenEntry(emptyEntry(), 4).find("<CreationTime>" + KdbxDate::base64({y2020}) + "</CreationTime>"),
              std::string::npos);
    auto entry = emptyEntry();
    entry.unknownXML = {"<LastSeen>2020-01-02T03:04:05Z</LastSeen>"};
    EXPECT_NE(writtenEntry(entry, 4).find("<LastSeen>2020-01-02T03:04:05Z</LastSeen>"), std::string::npos);
}

TEST(KdbxXMLWriterTest, simpleElementsCloseThemselvesWhenTheTextIsEmpty) {
    NullStreamCipher stream;
    KdbxXML::Writer writer(stream, 3);
    writer.element("a", "");
    writer.element("b", "<");
    writer.element("c", "\x01");
    writer.element("d", true);
    writer.element("e", false);
    writer.element("f", Timestamp{y2020});

    EXPECT_EQ(textOf(writer.out()), "<a/><b>&lt;</b><c></c><d>True</d><e>False</e><f>2020-01-02T03:04:05Z</f>");
}

// --- Protection ---

TEST(KdbxXMLWriterTest, aPasswordWithMarkupIsPlainUnderTheMaskAndEscapedWithoutOne) {
    auto entry = emptyEntry();
    entry.password = SecureString("a<b");
    const std::string unprotected = "<MemoryProtection><ProtectPassword>False</ProtectPassword></MemoryProtection>";

    EXPECT_NE(writtenWith("", entry).find("<Value Protected=\"True\">" + base64Of("a<b") + "</Value>"),
              std::string::npos);
    EXPECT_NE(writtenWith(unprotected, entry).find("<Key>Password</Key><Value>a&lt;b</Value>"), std::string::npos);
}

TEST(KdbxXMLWriterTest, memoryProtectionChoosesWhichStandardStringsAreMasked) {
    const std::pair<std::string, std::string> flags[] = {{"ProtectTitle", "Title"},
                                                         {"ProtectUserName", "UserName"},
                                                         {"ProtectPassword", "Password"},
                                                         {"ProtectURL", "URL"},
                                                         {"ProtectNotes", "Notes"}};
    for (const auto& [flag, key] : flags) {
        const auto preserved = "<MemoryProtection><ProtectPassword>0</ProtectPassword></MemoryProtection>";
        const auto on = flag == "ProtectPassword"
                            ? "<MemoryProtection><" + flag + "> 1 </" + flag + "></MemoryProtection>"
                            : "<MemoryProtection><ProtectPassword>0</ProtectPassword><" + flag + "> TRUE </" + flag +
                                  "></MemoryProtection>";
        for (const auto& [otherFlag, otherKey] : flags) {
            const auto mask = "<Key>" + otherKey + "</Key><Value Protected=\"True\"></Value>";
            EXPECT_EQ(writtenWith(preserved, emptyEntry()).find(mask), std::string::npos) << otherKey;
            EXPECT_EQ(writtenWith(on, emptyEntry()).find(mask) != std::string::npos, otherKey == key) << on;
        }
    }
}

TEST(KdbxXMLWriterTest, missingAndUnreadableFlagsMaskThePasswordAlone) {
    for (const auto* preserved :
         {"<MemoryProtection/>",
          "<MemoryProtection><ProtectTitle>?</ProtectTitle><ProtectPassword>?</ProtectPassword></MemoryProtection>",
          "<MemoryProtection/><MemoryProtection><ProtectTitle>True</ProtectTitle></MemoryProtection>"}) {
        const auto text = writtenWith(preserved, emptyEntry());
        EXPECT_NE(text.find("<Key>Password</Key><Value Protected"), std::string::npos) << preserved;
        EXPECT_NE(text.find("<Key>Title</Key><Value/>"), std::string::npos) << preserved;
    }
}

TEST(KdbxXMLWriterTest, everyPreservedMemoryProtectionStandsAtItsPlace) {
    const auto text = writtenWith("<A/><MemoryProtection x='1'/><B/><MemoryProtection/><Binaries/>", emptyEntry());
    EXPECT_EQ(between(text, "<DefaultUserName/>", "<RecycleBinEnabled>"),
              "<DefaultUserName/><MemoryProtection x=\"1\"/><MemoryProtection/><RecycleBinEnabled>");
    EXPECT_EQ(between(text, "</HistoryMaxSize>", "</Meta>"), "</HistoryMaxSize><A/><B/></Meta>");
}

TEST(KdbxXMLWriterTest, masksInTheOrderOfTheDocument) {
    auto entry = emptyEntry();
    entry.password = SecureString("2");
    entry.customFields = {{"b", "4444"}, {"a", "333"}};
    entry.protectedCustomFields = {"a", "b"};
    entry.unknownXML = {"<V Protected='True'>55555</V>"};
    auto item = emptyEntry();
    item.password = SecureString("666666");
    item.unknownXML = {"<V Protected='True'>7777777</V>"};
    entry.historyItems.append(item);
    auto subgroup = emptyGroup();
    subgroup.unknownXML = {"<V Protected='True'>99999999</V>"};
    auto root = groupOf(entry);
    root.groups.append(subgroup);
    root.unknownXML = {"<V Protected='True'>11</V>",
                       "<BrenvikPreservedMeta><V Protected='True'></V><X><V Protected='True'>0123456789</V></X>"
                       "</BrenvikPreservedMeta>",
                       "<BrenvikPreservedRoot><V Protected='True'>abcdefghijk</V></BrenvikPreservedRoot>"};
    CountingStream writing;
    const auto xml = KdbxXML::serialize(database({}, root), writing, std::nullopt);
    CountingStream reading;
    const auto read = KdbxXML::parse(xml, reading, {4, 1}, {});

    EXPECT_EQ(writing.lengths, (std::vector<std::size_t>{0, 10, 2, 1, 3, 4, 5, 6, 7, 8, 11}));
    EXPECT_EQ(reading.lengths, writing.lengths);
    EXPECT_EQ(read.root.entries[0].password.value(), "2");
    EXPECT_EQ(read.root.entries[0].customFields, entry.customFields);
    EXPECT_EQ(read.root.entries[0].historyItems[0].password.value(), "666666");
    EXPECT_EQ(read.root.groups[0].unknownXML.back(), "<V Protected=\"True\">99999999</V>");
    EXPECT_EQ(read.root.unknownXML.back(),
              "<BrenvikPreservedRoot><V Protected=\"True\">abcdefghijk</V></BrenvikPreservedRoot>");
}

TEST(KdbxXMLWriterTest, aProtectedForeignElementLosesItsChildren) {
    auto entry = emptyEntry();
    entry.unknownXML = {"<V k='&quot;' Protected='True'><W>x</W></V>"};
    EXPECT_EQ(between(writtenEntry(entry), "</AutoType>", "</Entry>"),
              "</AutoType><V k=\"&quot;\" Protected=\"True\"></V></Entry>");
}

// --- Text ---

TEST(KdbxXMLWriterTest, controlCharactersAreGoneMaskedOrNot) {
    auto entry = emptyEntry();
    entry.title =
        "a\x01\uFFFE"
        "b";
    entry.password = SecureString(
        "c\x02\uFFFF"
        "d");
    const auto text = writtenEntry(entry);
    EXPECT_NE(text.find("<Value>ab</Value>"), std::string::npos);
    EXPECT_NE(text.find("<Value Protected=\"True\">" + base64Of("cd") + "</Value>"), std::string::npos);
}

TEST(KdbxXMLWriterTest, aTextThatSanitisesToNothingIsBetweenTwoTags) {
    auto entry = emptyEntry();
    entry.title = "\x01";
    EXPECT_NE(writtenEntry(entry).find("<Key>Title</Key><Value></Value>"), std::string::npos);
}

TEST(KdbxXMLWriterTest, aCarriageReturnIsWrittenBare) {
    auto entry = emptyEntry();
    entry.notes = "a\r\nb";
    EXPECT_NE(writtenEntry(entry).find("<Value>a\r\nb</Value>"), std::string::npos);
}

TEST(KdbxXMLWriterTest, markupThatACombiningMarkFollowsDoesNotSpoilTheDocument) {
    KdbxMeta meta;
    auto entry = emptyEntry();
    const std::string text = "<\u0301&\u0308>\u0301 ]]>\u0301 \u0600< \u0600& \r\u0301";
    meta.databaseName = text;
    entry.title = entry.notes = text;
    entry.tags = {text};
    entry.customFields = {{text, text}};
    entry.autoTypeWindowAssociations = {{.window = text, .sequence = text}};
    entry.unknownXML = {"<F/>"};
    const auto read = parse(written(database(meta, groupOf(entry))));

    auto expected = text;
    std::ranges::replace(expected, '\r', '\n');
    EXPECT_EQ(read.meta.databaseName, expected);
    EXPECT_EQ(read.root.entries[0].title, expected);
    EXPECT_EQ(read.root.entries[0].customFields.begin()->first, expected);
    EXPECT_EQ(read.root.entries[0].autoTypeWindowAssociations[0].window, expected);
    EXPECT_EQ(read.root.entries[0].tags, std::vector<std::string>{expected});
}

TEST(KdbxXMLWriterTest, foreignTextWithACombiningMarkSurvivesEachCycle) {
    const std::string foreign = "<F a=\"&lt;\u0301&quot;\u0301\">&lt;\u0301&amp;\u0308</F>";
    auto xml = rewritten(documentOfEntry(foreign));
    EXPECT_NE(xml.find(foreign), std::string::npos);
    EXPECT_NE(rewritten(xml).find(foreign), std::string::npos);
}

TEST(KdbxXMLWriterTest, anyTimeThatAFileHoldsCanBeSaved) {
    for (const auto* count : {"/////////38=", "AAAAAAAAAIA=", "//////////8=", "AAAAAAAAAEA="}) {
        const auto entry = parseEntry("<Times><CreationTime>" + std::string(count) + "</CreationTime><ExpiryTime>" +
                                      count + "</ExpiryTime></Times>");
        EXPECT_EQ(parse(written(database({}, groupOf(entry)))).root.entries[0].created, entry.created) << count;
        EXPECT_NE(writtenEntry(entry, 3), "not found") << count;
    }
}

}  // namespace
