// SPDX-License-Identifier: MIT
#include "DocumentTesting.h"
#include "core/document/KdbxDate.h"
#include "core/primitives/Base64.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// What becomes of each part of a document that is read and written again.

namespace {

using namespace DocumentTesting;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

std::string metaAfter(const std::string& meta) {
    return between(rewritten(document({.meta = meta, .group = "", .root = ""})), "<Meta>", "</Meta>");
}

std::string groupAfter(const std::string& children) {
    return between(rewritten(document({.meta = "", .group = children, .root = ""})), "<Root>", "</Root>");
}

std::string entryAfter(const std::string& children) {
    return between(rewritten(documentOfEntry(children)), "<Entry>", "</Root>");
}

std::string binaryDate(const std::string& iso) {
    return KdbxDate::base64(KdbxDate::parse(iso).value());
}

TEST(PreservationTest, metaTextsComeBackTrimmed) {
    EXPECT_THAT(metaAfter("<DefaultUserName> u </DefaultUserName><DatabaseDescription>d</DatabaseDescription>"
                          "<DatabaseName>n\n</DatabaseName><Generator> g</Generator>"),
                HasSubstr("<Meta><Generator>g</Generator><DatabaseName>n</DatabaseName><DatabaseDescription>d"
                          "</DatabaseDescription><DefaultUserName>u</DefaultUserName><MemoryProtection>"));
}

TEST(PreservationTest, metaNumbersAndFlagsComeBackAndAnAbsentBinIsZero) {
    const std::string bin = "<RecycleBinUUID>AAECAwQFBgcICQoLDA0ODw==</RecycleBinUUID>";
    const std::string rest = "<HistoryMaxItems>3</HistoryMaxItems><HistoryMaxSize>4</HistoryMaxSize>";
    EXPECT_THAT(metaAfter(rest + bin + "<RecycleBinEnabled>0</RecycleBinEnabled>"),
                HasSubstr("<RecycleBinEnabled>False</RecycleBinEnabled>" + bin + rest + "</Meta>"));
    EXPECT_THAT(metaAfter(rest), HasSubstr("<RecycleBinUUID>AAAAAAAAAAAAAAAAAAAAAA==</RecycleBinUUID>" + rest));
}

TEST(PreservationTest, theHeaderHashIsNotWrittenAnew) {
    EXPECT_THAT(metaAfter("<HeaderHash>Zm9v</HeaderHash>"), Not(HasSubstr("HeaderHash")));
}

TEST(PreservationTest, memoryProtectionComesBackAtItsPlaceAndIsObeyed) {
    const std::string protection =
        "<MemoryProtection><ProtectTitle>True</ProtectTitle><ProtectPassword>False</ProtectPassword><Own/>"
        "</MemoryProtection>";
    const auto text = rewritten(document({.meta = "<X/>" + protection + "<Y/>",
                                          .group = "<Entry><String><Key>Title</Key><Value>t</Value></String><String>"
                                                   "<Key>Password</Key><Value Protected='True'>cA==</Value></String>"
                                                   "</Entry>",
                                          .root = ""}));
    EXPECT_THAT(text, HasSubstr("<DefaultUserName/>" + protection + "<RecycleBinEnabled>"));
    EXPECT_THAT(text, HasSubstr("</HistoryMaxSize><X/><Y/></Meta>"));
    EXPECT_THAT(text, HasSubstr("<Key>Title</Key><Value Protected=\"True\">dA==</Value>"));
    EXPECT_THAT(text, HasSubstr("<Key>Password</Key><Value>p</Value>"));
}

TEST(PreservationTest, theAttachmentPoolOfAnOldDocumentIsLostAndItsReferencesAreKept) {
    const auto text = rewritten(document({.meta = "<Binaries><Binary ID='0'>Zm9v</Binary></Binaries>",
                                          .group = "<Entry><Binary><Key>a.txt</Key><Value Ref='0'/></Binary></Entry>",
                                          .root = ""}));
    EXPECT_THAT(text, Not(HasSubstr("Binaries")));
    EXPECT_THAT(text, HasSubstr("</AutoType><Binary><Key>a.txt</Key><Value Ref=\"0\"/></Binary></Entry>"));
}

TEST(PreservationTest, otherMetaChildrenComeBackInDocumentOrderAtTheEnd) {
    const std::string icons =
        "<CustomIcons><Icon><UUID>AAECAwQFBgcICQoLDA0ODw==</UUID><Data>iVBORw0KGgo=</Data></Icon></CustomIcons>";
    const std::string changed = "<SettingsChanged>2020-01-02T03:04:05Z</SettingsChanged>";
    const std::string data = "<CustomData><Item><Key>k</Key><Value>v</Value></Item></CustomData>";
    EXPECT_THAT(metaAfter(changed + "<DatabaseName>n</DatabaseName>" + icons + data),
                HasSubstr("</HistoryMaxSize>" + changed + icons + data + "</Meta>"));
}

TEST(PreservationTest, furtherRootGroupsAreLostAndOtherRootChildrenComeBackBehindTheFirst) {
    const std::string deleted =
        "<DeletedObjects><DeletedObject><UUID>AAECAwQFBgcICQoLDA0ODw==</UUID>"
        "<DeletionTime>2020-01-02T03:04:05Z</DeletionTime></DeletedObject></DeletedObjects>";
    const auto text =
        rewritten(document({.meta = "", .group = "", .root = "<Group><Name>2</Name></Group>" + deleted + "<Z/>"}));
    EXPECT_THAT(text, HasSubstr("</Group>" + deleted + "<Z/></Root></KeePassFile>"));
    EXPECT_THAT(text, Not(HasSubstr("<Name>2</Name>")));
}

TEST(PreservationTest, otherChildrenOfTheDocumentElementAreLost) {
    EXPECT_THAT(rewritten("<KeePassFile><A/><Root><Group/></Root><B/></KeePassFile>"),
                testing::AllOf(Not(HasSubstr("<A/>")), Not(HasSubstr("<B/>"))));
}

TEST(PreservationTest, fieldsOfAGroupComeBack) {
    EXPECT_THAT(
        groupAfter("<DefaultAutoTypeSequence> s</DefaultAutoTypeSequence><IsExpanded>0</IsExpanded>"
                   "<IconID>5</IconID><Notes> n\n</Notes><Name> a </Name>"
                   "<UUID>AAECAwQFBgcICQoLDA0ODw==</UUID>"),
        testing::AllOf(HasSubstr("<Group><UUID>AAECAwQFBgcICQoLDA0ODw==</UUID><Name> a </Name><Notes> n\n</Notes>"
                                 "<IconID>5</IconID><Times>"),
                       HasSubstr("</Times><IsExpanded>False</IsExpanded>"
                                 "<DefaultAutoTypeSequence> s</DefaultAutoTypeSequence></Group>")));
}

TEST(PreservationTest, ofTheTimesOfAGroupTwoComeBack) {
    const auto created = binaryDate("2020-01-02T03:04:05Z");
    const auto modified = binaryDate("2021-01-02T03:04:05Z");
    EXPECT_THAT(
        groupAfter("<Times><CreationTime>" + created + "</CreationTime><LastModificationTime>" + modified +
                   "</LastModificationTime><LastAccessTime>AAAAAAAAAAA=</LastAccessTime><ExpiryTime>AAAAAAAAAAA="
                   "</ExpiryTime><Expires>True</Expires><UsageCount>9</UsageCount><LocationChanged>AAAAAAAAAAA="
                   "</LocationChanged><Own/></Times>"),
        HasSubstr("<Times><CreationTime>" + created + "</CreationTime><LastModificationTime>" + modified +
                  "</LastModificationTime><LastAccessTime>" + modified + "</LastAccessTime><ExpiryTime>" + modified +
                  "</ExpiryTime><Expires>False</Expires><UsageCount>0</UsageCount><LocationChanged>" + created +
                  "</LocationChanged></Times>"));
}

TEST(PreservationTest, otherChildrenOfAGroupStandBeforeItsEntries) {
    EXPECT_THAT(groupAfter("<Group/><Entry/><EnableAutoType>null</EnableAutoType><CustomData/>"),
                HasSubstr("<DefaultAutoTypeSequence/><EnableAutoType>null</EnableAutoType><CustomData/><Entry>"));
}

TEST(PreservationTest, fieldsOfAnEntryComeBackWithTagsNormalised) {
    EXPECT_THAT(entryAfter("<Tags> a , b;;c </Tags><IconID>+5</IconID><UUID>AAECAwQFBgcICQoLDA0ODw==</UUID>"),
                HasSubstr("<Entry><UUID>AAECAwQFBgcICQoLDA0ODw==</UUID><IconID>5</IconID><ForegroundColor/>"
                          "<BackgroundColor/><OverrideURL/><Tags>a;b;c</Tags><Times>"));
}

TEST(PreservationTest, timesOfAnEntryComeBackToTheSecond) {
    const auto second = binaryDate("2020-01-02T03:04:05Z");
    const auto next = binaryDate("2020-01-02T03:04:06Z");
    EXPECT_THAT(
        entryAfter("<Times><CreationTime>2020-01-02T03:04:05.499Z</CreationTime><LastModificationTime>" + next +
                   "</LastModificationTime><LastAccessTime>" + second + "</LastAccessTime><ExpiryTime>" + second +
                   "</ExpiryTime><Expires>True</Expires><UsageCount>9</UsageCount><LocationChanged>AAAAAAAAAAA="
                   "</LocationChanged><Own/></Times>"),
        HasSubstr("<Times><CreationTime>" + second + "</CreationTime><LastModificationTime>" + next +
                  "</LastModificationTime><LastAccessTime>" + second + "</LastAccessTime><ExpiryTime>" + second +
                  "</ExpiryTime><Expires>True</Expires><UsageCount>0</UsageCount><LocationChanged>" + second +
                  "</LocationChanged></Times>"));
    EXPECT_THAT(entryAfter("<Times><LastModificationTime>" + next + "</LastModificationTime></Times>"),
                HasSubstr("<ExpiryTime>" + next + "</ExpiryTime>"));
}

TEST(PreservationTest, stringsComeBackStandardOnesFirstThenSortedWithTheMarkOfCustomOnes) {
    EXPECT_THAT(
        entryAfter("<String><Key>z</Key><Value Protected='True'>YQ==</Value></String><String><Key x='1'>a</Key>"
                   "<Value y='2'>b</Value></String><String><Key>Notes</Key><Value Protected='True'>Yg==</Value>"
                   "</String><String><Key>URL</Key><Value>u</Value></String>"),
        HasSubstr("</Times><String><Key>Title</Key><Value/></String><String><Key>UserName</Key><Value/></String>"
                  "<String><Key>Password</Key><Value Protected=\"True\"></Value></String>"
                  "<String><Key>URL</Key><Value>u</Value></String><String><Key>Notes</Key><Value>b</Value></String>"
                  "<String><Key>a</Key><Value>b</Value></String>"
                  "<String><Key>z</Key><Value Protected=\"True\">YQ==</Value></String><AutoType>"));
}

TEST(PreservationTest, ofAutoTypeThreeThingsComeBack) {
    EXPECT_THAT(
        entryAfter("<AutoType><Own/><Association><KeystrokeSequence>s</KeystrokeSequence><Window>w</Window><Own/>"
                   "</Association><DefaultSequence>d</DefaultSequence><DataTransferObfuscation>1"
                   "</DataTransferObfuscation><Enabled>False</Enabled></AutoType>"),
        HasSubstr("<AutoType><Enabled>False</Enabled><DataTransferObfuscation>0</DataTransferObfuscation>"
                  "<DefaultSequence>d</DefaultSequence><Association><Window>w</Window><KeystrokeSequence>s"
                  "</KeystrokeSequence></Association></AutoType></Entry>"));
}

TEST(PreservationTest, historyComesBackOneLevelDeep) {
    const auto text = entryAfter(
        "<History><Own/><Entry><IconID>1</IconID><Foo/><History><Entry><IconID>2</IconID></Entry></History></Entry>"
        "</History><History><Entry><IconID>3</IconID></Entry></History>");
    EXPECT_THAT(text, HasSubstr("</AutoType><History><Entry>"));
    EXPECT_THAT(text, HasSubstr("<IconID>1</IconID>"));
    EXPECT_THAT(text, HasSubstr("</AutoType><Foo/></Entry><Entry>"));
    EXPECT_THAT(text, Not(HasSubstr("<IconID>2</IconID>")));
    EXPECT_THAT(text, HasSubstr("<IconID>3</IconID>"));
    EXPECT_THAT(text, Not(HasSubstr("<Own/>")));
}

TEST(PreservationTest, otherChildrenOfAnEntryStandBetweenAutoTypeAndHistory) {
    const std::string foreign =
        "<ForegroundColor>#112233</ForegroundColor><BackgroundColor/><OverrideURL>cmd://x</OverrideURL>"
        "<CustomData><Item/></CustomData><Binary><Key>k</Key><Value Ref=\"0\"/></Binary>";
    EXPECT_THAT(entryAfter("<History><Entry/></History>" + foreign), HasSubstr("</AutoType>" + foreign + "<History>"));
}

TEST(PreservationTest, eachCycleAddsOneMoreSetOfEmptyElements) {
    const std::string set = "<ForegroundColor/><BackgroundColor/><OverrideURL/>";
    auto text = rewritten(documentOfEntry("<History><Entry/></History>"));
    for (int cycle = 1; cycle <= 3; ++cycle) {
        text = rewritten(text);
        EXPECT_THAT(text, HasSubstr("</AutoType>" + repeated(set, cycle) + "<History>"));
        EXPECT_THAT(text, HasSubstr("</AutoType>" + repeated(set, cycle) + "</Entry></History>"));
    }
}

TEST(PreservationTest, whatOnlyXMLKnowsIsLost) {
    EXPECT_THAT(groupAfter("<!-- c --><?p q?><Foo b='1' a='2'>text<Bar><![CDATA[<x>&]]></Bar>text</Foo>"),
                HasSubstr("<DefaultAutoTypeSequence/><Foo a=\"2\" b=\"1\"><Bar>&lt;x&gt;&amp;</Bar></Foo></Group>"));
}

TEST(PreservationTest, aTabInAnAttributeBecomesABlankAndACarriageReturnInATextALineFeed) {
    EXPECT_THAT(groupAfter("<Foo a='1&#9;2&#10;3&#13;4'/>"), HasSubstr("<Foo a=\"1 2&#xA;3&#xD;4\"/>"));
    EXPECT_THAT(groupAfter("<Foo>1&#13;2</Foo>"), HasSubstr("<Foo>1\n2</Foo>"));
    EXPECT_THAT(groupAfter("<Name>1&#13;2</Name>"), HasSubstr("<Name>1\r2</Name>"));
}

TEST(PreservationTest, charactersThatXMLCannotCarryAreRemoved) {
    const auto control =
        Base64::encode(bytesOf("a\x01"
                               "b"));
    EXPECT_THAT(groupAfter("<V Protected='True'>" + control + "</V>"),
                HasSubstr("<V Protected=\"True\">" + Base64::encode(bytesOf("ab")) + "</V>"));
}

TEST(PreservationTest, aForeignSecretOfMetaIsMaskedAtItsPlace) {
    const auto values = masked({"ikon", "parola"});
    CountingStream reading;
    auto read = KdbxXML::parse(bytesOf(document({.meta = "<A/><P Protected='True'>" + values[0] + "</P>",
                                                 .group = "<Entry><String><Key>Password</Key><Value Protected='True'>" +
                                                          values[1] + "</Value></String></Entry>",
                                                 .root = ""})),
                               reading, {4, 1}, {});
    CountingStream writing;

    const auto text = KdbxXML::serialize(database(read.meta, read.root), writing, std::nullopt);

    EXPECT_THAT(std::string(textOf(text)), HasSubstr("<A/><P Protected=\"True\">" + values[0] + "</P></Meta>"));
    EXPECT_THAT(std::string(textOf(text)), HasSubstr("<Value Protected=\"True\">" + values[1] + "</Value>"));
}

TEST(PreservationTest, attachmentsRideAlongAndNoWrapperReachesTheFile) {
    const std::vector<KdbxXML::Binary> binaries{{.flags = 1, .data = copyOf(bytesOf("foo"))}, {.flags = 0, .data = {}}};
    auto read = parse(document({.meta = "<A/>", .group = "<Group/>", .root = "<B/>"}), binaries);

    EXPECT_EQ(KdbxXML::preservedBinaries(read.root), binaries);
    const auto text = written(database(read.meta, read.root));
    EXPECT_THAT(text, Not(HasSubstr("BrenvikPreserved")));
    EXPECT_EQ(text, written(database(read.meta, read.root)));
}

TEST(PreservationTest, anElementNamedAsAWrapperIsLeftOutAnywhere) {
    for (const auto* name : {"BrenvikPreservedMeta", "BrenvikPreservedRoot", "BrenvikPreservedBinaries"}) {
        const auto element = "<" + std::string(name) + "><X/></" + name + ">";
        EXPECT_THAT(entryAfter(element + "<Y/>"), testing::AllOf(HasSubstr("</AutoType><Y/>"), Not(HasSubstr(name))));
        EXPECT_THAT(groupAfter("<Group>" + element + "</Group>"), Not(HasSubstr(name)));
    }
}

TEST(PreservationTest, aBrokenWrapperIsPassedOver) {
    auto root = parse("<KeePassFile><Root><Group/></Root></KeePassFile>").root;
    root.unknownXML = {"<BrenvikPreservedMeta><A>", "<BrenvikPreservedMeta><B/></BrenvikPreservedMeta>",
                       "<BrenvikPreservedMeta><C/></BrenvikPreservedMeta>", "<BrenvikPreservedRoot"};
    EXPECT_THAT(written(database({}, root)),
                testing::AllOf(HasSubstr("</HistoryMaxSize><B/></Meta>"), HasSubstr("</Group></Root></KeePassFile>")));
}

}  // namespace
