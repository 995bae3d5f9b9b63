// SPDX-License-Identifier: MIT
#include "core/document/PrintedForm.h"

#include "DocumentTesting.h"
#include "core/document/KdbxXMLNode.h"

#include <gtest/gtest.h>

namespace {

using DocumentTesting::repeated;

TEST(PrintedFormTest, recognisesWhatThePrinterPrints) {
    for (const auto* text :
         {"<a/>", "<_a-b.1/>", "<a> </a>", "<a>x\t\n\"'\x7F şş</a>", "<a><b/></a>", "<a><b>1</b><b>2</b></a>",
          "<a b=\"\"/>", "<a b=\"1\" c=\"&amp;&lt;&gt;&quot;&#xA;&#xD;'ş\">&amp;&lt;&gt;</a>", "<a B=\"1\" a=\"2\"/>",
          "<a>&lt;\u0301</a>", "<a protected=\"True\"/>", "<a>\uFFFD\U0001FFFE</a>"}) {
        EXPECT_EQ(PrintedForm::nameOf(text), std::string_view(text).starts_with("<_") ? "_a-b.1" : "a") << text;
        EXPECT_EQ(KdbxXMLNode::parse(bytesOf(text), nullptr)->rawXMLString(), text);
    }
}

TEST(PrintedFormTest, leavesAllElseToTheParser) {
    for (const auto* text : {"",
                             "a",
                             "<",
                             "<a",
                             "<a>",
                             "</a>",
                             "<a/",
                             "<a/>x",
                             " <a/>",
                             "<a></a>",
                             "<a>x</b>",
                             "<a>x</a",
                             "<a>x</a >",
                             "<a />",
                             "<a >x</a>",
                             "<1/>",
                             "<ş/>",
                             "<a:b/>",
                             "<a><b/>x</a>",
                             "<a>x<b/></a>",
                             "<a><b/></a",
                             "<a><b></a>",
                             "<a b='1'/>",
                             "<a  b=\"1\"/>",
                             "<a b=\"1\"c=\"2\"/>",
                             "<a b=\"2\" a=\"1\"/>",
                             "<a b=\"1\" b=\"1\"/>",
                             "<a b/>",
                             "<a b=\"1/>",
                             "<a b=\"<\"/>",
                             "<a b=\"\t\"/>",
                             "<a b=\"\n\"/>",
                             "<a b=\"&apos;\"/>",
                             "<a Protected=\"True\">x</a>",
                             "<a><b Protected=\"False\"/></a>",
                             "<a>></a>",
                             "<a>&</a>",
                             "<a>&quot;</a>",
                             "<a>&#xA;</a>",
                             "<a>\r</a>",
                             "<a>\x01</a>",
                             "<a>\xFF</a>",
                             "<a>\uFFFE</a>",
                             "<a>\uFFFF</a>",
                             "<a><!-- b --></a>",
                             "<a><![CDATA[b]]></a>",
                             "<?a b?><a/>",
                             "<!DOCTYPE a><a/>"})
        EXPECT_EQ(PrintedForm::nameOf(text), std::nullopt) << text;
}

TEST(PrintedFormTest, doesNotFollowDeepNesting) {
    EXPECT_EQ(PrintedForm::nameOf(repeated("<a>", 64) + "x" + repeated("</a>", 64)), "a");
    EXPECT_EQ(PrintedForm::nameOf(repeated("<a>", 65) + "x" + repeated("</a>", 65)), std::nullopt);
    EXPECT_EQ(PrintedForm::nameOf(repeated("<a>", 1'000'000)), std::nullopt);
}

}  // namespace
