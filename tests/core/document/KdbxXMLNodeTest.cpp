// SPDX-License-Identifier: MIT
#include "core/document/KdbxXMLNode.h"

#include "DocumentTesting.h"
#include "core/primitives/Base64.h"

#include <gtest/gtest.h>

#include <ctime>
#include <iterator>

namespace {

using DocumentTesting::masked;
using DocumentTesting::repeated;

using Node = std::shared_ptr<const KdbxXMLNode>;

Node parsed(std::string_view xml, InnerStreamCipher* stream = nullptr) {
    return KdbxXMLNode::parse(bytesOf(xml), stream);
}

std::ptrdiff_t childCount(const KdbxXMLNode& node) {
    return std::ranges::distance(node.children);
}

const KdbxXMLNode& child(const KdbxXMLNode& node, std::ptrdiff_t index) {
    return *std::ranges::next(node.children.begin(), index);
}

std::string raw(std::string_view xml) {
    const auto node = parsed(xml);
    return node ? node->rawXMLString() : "none";
}

TEST(KdbxXMLNodeTest, holdsNameAttributesTextAndChildrenInDocumentOrder) {
    const auto node = parsed("<p:a x='1' y='&lt;&#x15F;'>t<b/>u<c>v</c>w</p:a>");

    EXPECT_EQ(node->name, "p:a");
    EXPECT_EQ(node->attributes, (Text::Map<std::string>{{"x", "1"}, {"y", "<ş"}}));
    EXPECT_EQ(node->text, "tuw");
    ASSERT_EQ(childCount(*node), 2);
    EXPECT_EQ(child(*node, 0).name, "b");
    EXPECT_EQ(child(*node, 1).text, "v");
    EXPECT_FALSE(node->isProtected);
}

TEST(KdbxXMLNodeTest, findsChildrenByNameUpToCanonicalEquivalence) {
    const auto node = parsed("<a><b>1</b><c/><b>2</b><ş>3</ş></a>");

    EXPECT_EQ(node->child("b")->text, "1");
    EXPECT_EQ(node->child("s\u0327")->text, "3");
    EXPECT_EQ(node->child("B"), nullptr);
}

TEST(KdbxXMLNodeTest, ofTwoCanonicallyEqualAttributesTheLaterValueStands) {
    const auto node = parsed("<a \u015F='1' s\u0327='2'/>");

    ASSERT_EQ(node->attributes.size(), 1U);
    EXPECT_EQ(node->attributes.begin()->second, "2");
}

TEST(KdbxXMLNodeTest, protectsInAnyLetterCaseOfTrueAndForgetsTheAttribute) {
    for (const auto* value : {"True", "TRUE", "true", "tRuE"}) {
        const auto node = parsed(std::string("<a Protected='") + value + "'>x</a>");
        EXPECT_TRUE(node->isProtected) << value;
        EXPECT_TRUE(node->attributes.empty()) << value;
    }
    for (const auto* value : {"False", "", "1", " True", "yes"}) {
        const auto node = parsed(std::string("<a Protected='") + value + "'>x</a>");
        EXPECT_FALSE(node->isProtected) << value;
        EXPECT_TRUE(node->attributes.empty()) << value;
        EXPECT_EQ(node->rawXMLString(), "<a>x</a>") << value;
    }
    EXPECT_EQ(parsed("<a protected='True'>x</a>")->attributes.count("protected"), 1U);
}

TEST(KdbxXMLNodeTest, unmasksTheEmptyValueWithoutMovingTheStream) {
    CountingStream stream;
    const auto after = masked({"sonra"})[0];

    const auto node =
        parsed("<a><V Protected='True'></V><V Protected='True'/><V Protected='True'>" + after + "</V></a>", &stream);

    EXPECT_EQ(child(*node, 0).text, "");
    EXPECT_EQ(child(*node, 1).text, "");
    EXPECT_TRUE(child(*node, 1).isProtected);
    EXPECT_EQ(child(*node, 2).text, "sonra");
}

TEST(KdbxXMLNodeTest, passesOverWhiteSpaceAndForeignCharactersInMaskedValues) {
    CountingStream stream;
    auto value = masked({"gizli değer"})[0];
    value.insert(8, "\n\t ");
    value.insert(4, "\u00A0!<![CDATA[-]]>");

    EXPECT_EQ(parsed("<V Protected='True'> " + value + " </V>", &stream)->text, "gizli değer");
}

TEST(KdbxXMLNodeTest, aValueThatIsNotBase64IsEmptyAndLeavesTheStreamWhereItWas) {
    CountingStream stream;
    const auto next = masked({"sonraki"})[0];

    const auto node = parsed("<a><V Protected='True'>abcde</V><V Protected='True'>" + next + "</V></a>", &stream);

    EXPECT_EQ(child(*node, 0).text, "");
    EXPECT_EQ(child(*node, 1).text, "sonraki");
}

TEST(KdbxXMLNodeTest, repairsUnmaskedBytesThatAreNotText) {
    NullStreamCipher stream;
    const auto value =
        Base64::encode(bytesOf("a\xFF\xC3"
                               "b"));

    EXPECT_EQ(parsed("<V Protected='True'>" + value + "</V>", &stream)->text, "a\uFFFD\uFFFDb");
}

TEST(KdbxXMLNodeTest, unmasksAtEndTagsSoThatAnInnerValueComesBeforeTheOuter) {
    CountingStream stream;
    const auto values = masked({"iç", "dış", "son"});

    const auto node = parsed("<a><b Protected='True'>" + values[1].substr(0, 2) + "<c Protected='true'>" + values[0] +
                                 "</c>" + values[1].substr(2) + "</b><d Protected='TRUE'>" + values[2] + "</d></a>",
                             &stream);

    EXPECT_EQ(child(child(*node, 0), 0).text, "iç");
    EXPECT_EQ(child(*node, 0).text, "dış");
    EXPECT_EQ(child(*node, 1).text, "son");
    EXPECT_EQ(stream.lengths, (std::vector<std::size_t>{3, 5, 3}));
}

TEST(KdbxXMLNodeTest, takesProtectedValuesForPlainWithoutAStream) {
    const auto node = parsed("<Value Protected=\"True\">abc</Value>");

    EXPECT_TRUE(node->isProtected);
    EXPECT_EQ(node->text, "abc");
}

TEST(KdbxXMLNodeTest, joinsCharacterDataAndCDATAUntrimmed) {
    EXPECT_EQ(parsed("<a>a<![CDATA[b]]>c</a>")->text, "abc");
    EXPECT_EQ(parsed("<a> \n <![CDATA[<&]]>&amp;&#x41; </a>")->text, " \n <&&A ");
    EXPECT_EQ(parsed("<a>  x <!-- y --> z<?p q?>\n</a>")->text, "  x  z\n");
    EXPECT_EQ(parsed("<a> \u00A0\n x y \u2028\t</a>")->trimmedText(), "x y");
}

TEST(KdbxXMLNodeTest, normalisesLineEndsAsXMLPrescribes) {
    EXPECT_EQ(parsed("<a>1\r\n2\r3\n4</a>")->text, "1\n2\n3\n4");
    EXPECT_EQ(parsed("<a>\r\n</a>")->text, "\n");
    EXPECT_EQ(parsed("<a b='1\t2\n3'/>")->attributes.at("b"), "1 2 3");
}

TEST(KdbxXMLNodeTest, givesNothingForWhatIsNotWellFormed) {
    for (const auto* xml : {"",
                            " ",
                            "x",
                            "<a>",
                            "<a></b>",
                            "<a/><b/>",
                            "<a",
                            "<a b=c/>",
                            "<a b='1' b='2'/>",
                            "<a>&b;</a>",
                            "<a>\x01</a>",
                            "<a>&#0;</a>",
                            "<a>\xFF</a>",
                            "<a>\xC0\x80</a>",
                            "<a>\xED\xA0\x80</a>",
                            "<a>\xEF\xBF\xBE</a>",
                            "<a>]]></a>",
                            "<a/>x",
                            "x<a/>",
                            "<a><!-- -- --></a>",
                            "<1/>"})
        EXPECT_FALSE(parsed(xml)) << xml;
    EXPECT_FALSE(KdbxXMLNode::parse({}, nullptr));
}

TEST(KdbxXMLNodeTest, readsUTF8WhateverTheDeclarationSays) {
    EXPECT_EQ(parsed("<?xml version='1.0' encoding='ISO-8859-9'?><a>ş</a>")->text, "ş");
    EXPECT_EQ(parsed("<?xml version='1.0' encoding='UTF-16'?><a>ş</a>")->text, "ş");
    EXPECT_EQ(parsed("\xEF\xBB\xBF<a>ş</a>")->text, "ş");
}

TEST(KdbxXMLNodeTest, printsAttributesInOrderEscapedAndTheMarkLast) {
    EXPECT_EQ(raw("<n b='2' a='1'/>"), "<n a=\"1\" b=\"2\"/>");
    EXPECT_EQ(raw("<n Protected='true' z='1'>t</n>"), "<n z=\"1\" Protected=\"True\">t</n>");
    EXPECT_EQ(raw("<n a=\"&quot;'&amp;&lt;&gt;&#xA;&#xD;&#9;\"/>"), "<n a=\"&quot;'&amp;&lt;&gt;&#xA;&#xD;\t\"/>");
}

TEST(KdbxXMLNodeTest, printsTextOnlyWhereThereAreNoChildren) {
    EXPECT_EQ(raw("<a></a>"), "<a/>");
    EXPECT_EQ(raw("<a> </a>"), "<a> </a>");
    EXPECT_EQ(raw("<a>x<b/>y<c>z</c></a>"), "<a><b/><c>z</c></a>");
    EXPECT_EQ(raw("<a>&lt;&amp;&gt;\"'&#13;</a>"), "<a>&lt;&amp;&gt;\"'\r</a>");
}

TEST(KdbxXMLNodeTest, printsATextThatSanitisesToNothingBetweenTwoTags) {
    NullStreamCipher stream;
    const auto node = parsed("<a Protected='True'>" + Base64::encode(bytesOf("\x01")) + "</a>", &stream);

    EXPECT_EQ(node->rawXMLString(), "<a Protected=\"True\"></a>");
}

TEST(KdbxXMLNodeTest, printsProtectedValuesInTheClearWithTheirMark) {
    CountingStream stream;
    const auto node = parsed("<V Protected='True'>" + masked({"a<b"})[0] + "</V>", &stream);

    EXPECT_EQ(node->rawXMLString(), "<V Protected=\"True\">a&lt;b</V>");
}

TEST(KdbxXMLNodeTest, escapesMarkupThatACombiningMarkFollowsSinceItIsParsedAgain) {
    const std::string text = "<\u0301&\u0301>\u0301\"\u0301]]>\u0301";
    NullStreamCipher stream;
    const auto node = parsed("<a Protected='True'>" + Base64::encode(bytesOf(text)) + "</a>", &stream);

    EXPECT_EQ(parsed(node->rawXMLString())->text, text);

    const auto attributed = parsed("<a k='&lt;\u0301&amp;\u0301&gt;\u0301\"\u0301]]&gt;\u0301'/>");
    EXPECT_EQ(attributed->attributes.at("k"), text);
    EXPECT_EQ(parsed(attributed->rawXMLString())->attributes.at("k"), text);
}

TEST(KdbxXMLNodeTest, resolvesEntitiesThatTheDocumentDeclares) {
    EXPECT_EQ(parsed("<!DOCTYPE a [<!ENTITY e 'de&#x11F;er'>]><a b='&e;'>&e;!</a>")->text, "değer!");
    EXPECT_EQ(childCount(*parsed("<!DOCTYPE a [<!ENTITY e '<c>1</c>'>]><a>&e;&e;</a>")), 2);
}

TEST(KdbxXMLNodeTest, fetchesNothingFromOutsideTheDocument) {
    const auto node = parsed("<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/hostname'>]><a>x&e;y</a>");
    EXPECT_TRUE(!node || node->text == "xy");
    EXPECT_FALSE(parsed("<!DOCTYPE a SYSTEM 'file:///etc/hostname'><a>&e;</a>"));
    EXPECT_EQ(parsed("<!DOCTYPE a SYSTEM 'file:///etc/hostname'><a>x</a>")->text, "x");
}

TEST(KdbxXMLNodeTest, refusesEntitiesThatGrowBeyondMeasure) {
    std::string bomb = "<!DOCTYPE a [<!ENTITY e0 'gülüş'>";
    for (int i = 1; i < 30; ++i)
        bomb += "<!ENTITY e" + std::to_string(i) + " '" + repeated("&e" + std::to_string(i - 1) + ";", 10) + "'>";
    const auto began = std::clock();

    EXPECT_FALSE(parsed(bomb + "]><a>&e29;</a>"));
    EXPECT_FALSE(parsed(bomb + "]><a b='&e29;'/>"));
    const auto wide = "<!DOCTYPE a [<!ENTITY e '" + std::string(1'000'000, 'x') + "'>]><a>";
    EXPECT_FALSE(parsed(wide + repeated("&e;", 1000) + "</a>"));
    const auto inherited = "<!DOCTYPE a [<!ATTLIST b c CDATA '" + std::string(1'000'000, 'x') + "'>]><a>";
    EXPECT_FALSE(parsed(inherited + repeated("<b/>", 1000) + "</a>"));

    // Unbounded, it would take years; bounded, some milliseconds, and more under a sanitizer.
    EXPECT_LT(std::clock() - began, 20 * CLOCKS_PER_SEC);
}

TEST(KdbxXMLNodeTest, refusesAChainOfEntitiesThatNoStackHolds) {
    std::string chain = "<!DOCTYPE a [<!ENTITY e0 'x'>";
    for (int i = 1; i < 100'000; ++i)
        chain += "<!ENTITY e" + std::to_string(i) + " '&e" + std::to_string(i - 1) + ";'>";
    EXPECT_FALSE(parsed(chain + "]><a>&e99999;</a>"));
}

TEST(KdbxXMLNodeTest, neverRefusesALongText) {
    const std::string text(std::size_t{64} << 20, 'x');
    EXPECT_EQ(parsed("<a><b>" + text + "</b></a>")->child("b")->text.size(), text.size());
    EXPECT_EQ(parsed("<a b='" + text.substr(0, text.size() / 4) + "'/>")->attributes.at("b").size(), text.size() / 4);
}

TEST(KdbxXMLNodeTest, readsALongTextOfManyPiecesInProportionalTime) {
    const auto text = repeated("satır &amp;\r\n", 1'000'000);
    EXPECT_EQ(parsed("<a>" + text + "</a>")->text.size(), 1'000'000U * 9);
}

TEST(KdbxXMLNodeTest, readsPrintsAndDestroysDeepNesting) {
    const auto xml = repeated("<a>", 2500) + "x" + repeated("</a>", 2500);
    const auto node = parsed(xml);
    ASSERT_TRUE(node);
    EXPECT_EQ(node->rawXMLString(), xml);
}

TEST(KdbxXMLNodeTest, givesNothingForNestingThatNoStackHolds) {
    EXPECT_FALSE(parsed(repeated("<a>", 2501) + repeated("</a>", 2501)));
    EXPECT_FALSE(parsed(repeated("<a>", 100'000) + repeated("</a>", 100'000)));
    EXPECT_FALSE(parsed(repeated("<a>", 1'000'000)));
}

TEST(KdbxXMLNodeTest, ownsWhatItWasParsedFrom) {
    auto xml = std::make_unique<std::string>("<a b='c'>metin<d>uzunca bir metin</d></a>");
    auto node = parsed(*xml);
    xml.reset();
    const auto other = node;
    node.reset();

    EXPECT_EQ(other->text, "metin");
    EXPECT_EQ(other->attributes.at("b"), "c");
    EXPECT_EQ(other->rawXMLString(), "<a b=\"c\"><d>uzunca bir metin</d></a>");
}

}  // namespace
