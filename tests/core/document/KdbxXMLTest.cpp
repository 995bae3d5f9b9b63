// SPDX-License-Identifier: MIT
#include "core/document/KdbxXML.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

KdbxGroup rootWith(std::vector<std::string> unknownXML) {
    KdbxGroup root;
    root.unknownXML = std::move(unknownXML);
    return root;
}

KdbxXML::Binary binary(std::uint8_t flags, std::string_view data) {
    return {.flags = flags, .data = copyOf(bytesOf(data))};
}

TEST(KdbxXMLTest, fourWordsAreBooleansInAnyLetterCase) {
    for (const auto* text : {"true", "True", "TRUE", "1"})
        EXPECT_EQ(KdbxXML::parseBool(text), true) << text;
    for (const auto* text : {"false", "False", "fALSE", "0"})
        EXPECT_EQ(KdbxXML::parseBool(text), false) << text;
    for (const auto* text : {"", "null", "yes", "2", " true", "true\n", "01", "tru\u0435"})
        EXPECT_EQ(KdbxXML::parseBool(text), std::nullopt) << text;
}

TEST(KdbxXMLTest, tagsAreTheTrimmedPiecesThatAreNotEmpty) {
    EXPECT_THAT(KdbxXML::splitTags("a; b, c"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(KdbxXML::splitTags(" iş ,, \u00A0banka\t;"), ElementsAre("iş", "banka"));
    EXPECT_THAT(KdbxXML::splitTags("b;a;b"), ElementsAre("b", "a", "b"));
    EXPECT_THAT(KdbxXML::splitTags(""), IsEmpty());
    EXPECT_THAT(KdbxXML::splitTags(" ; ,"), IsEmpty());
}

TEST(KdbxXMLTest, lineBreaksAreNotTrimmedFromTags) {
    EXPECT_THAT(KdbxXML::splitTags("\n"), ElementsAre("\n"));
    EXPECT_THAT(KdbxXML::splitTags(" \r\na ;b"), ElementsAre("\r\na", "b"));
}

TEST(KdbxXMLTest, tagsAreSplitAtWholeCharacters) {
    EXPECT_THAT(KdbxXML::splitTags("a;\u0301b;c"), ElementsAre("a;\u0301b", "c"));
    EXPECT_THAT(KdbxXML::splitTags("a\u037Eb"), ElementsAre("a", "b"));
}

TEST(KdbxXMLTest, attachmentsComeBackInOrderWithFlagsAndBytes) {
    const auto root =
        rootWith({"<BrenvikPreservedBinaries><Binary Flags=\"1\">Zm9v</Binary><Other>YQ==</Other>"
                  "<Binary Flags=\"0\"> YmFy\n</Binary><Binary Flags=\"255\"/></BrenvikPreservedBinaries>"});

    EXPECT_THAT(KdbxXML::preservedBinaries(root), ElementsAre(binary(1, "foo"), binary(0, "bar"), binary(255, "")));
}

TEST(KdbxXMLTest, flagsThatAreNoByteAreOne) {
    for (const auto* flags :
         {"", " Flags=''", " Flags='256'", " Flags='-1'", " Flags='x'", " Flags='1 '", " Flags='99999999999999999999'"})
        EXPECT_THAT(KdbxXML::preservedBinaries(rootWith({"<BrenvikPreservedBinaries><Binary" + std::string(flags) +
                                                         ">Zm9v</Binary></BrenvikPreservedBinaries>"})),
                    ElementsAre(binary(1, "foo")))
            << flags;
}

TEST(KdbxXMLTest, anAttachmentThatIsNotBase64IsEmpty) {
    EXPECT_THAT(KdbxXML::preservedBinaries(rootWith(
                    {"<BrenvikPreservedBinaries><Binary Flags='0'>Zm 9v</Binary></BrenvikPreservedBinaries>"})),
                ElementsAre(binary(0, "")));
}

TEST(KdbxXMLTest, theFirstWrapperThatParsesIsTaken) {
    const auto root = rootWith({"<Other/>", "<BrenvikPreservedBinaries><broken>",
                                "<BrenvikPreservedBinaries><Binary>Zg==</Binary></BrenvikPreservedBinaries>",
                                "<BrenvikPreservedBinaries><Binary>Zm8=</Binary></BrenvikPreservedBinaries>"});

    EXPECT_THAT(KdbxXML::preservedBinaries(root), ElementsAre(binary(1, "f")));
}

TEST(KdbxXMLTest, aWrapperIsFoundByTheBeginningOfItsText) {
    EXPECT_THAT(KdbxXML::preservedBinaries(
                    rootWith({"<BrenvikPreservedBinariesX><Binary>Zg==</Binary></BrenvikPreservedBinariesX>"})),
                ElementsAre(binary(1, "f")));
    EXPECT_THAT(KdbxXML::preservedBinaries(
                    rootWith({" <BrenvikPreservedBinaries><Binary>Zg==</Binary></BrenvikPreservedBinaries>"})),
                IsEmpty());
}

TEST(KdbxXMLTest, withoutAWrapperThereAreNoAttachments) {
    EXPECT_THAT(KdbxXML::preservedBinaries(KdbxGroup()), IsEmpty());
}

}  // namespace
