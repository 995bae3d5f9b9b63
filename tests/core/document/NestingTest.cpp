// SPDX-License-Identifier: MIT
#include "DocumentTesting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// Deep nesting loads and saves; what no stack holds is refused.

namespace {

using namespace DocumentTesting;
using testing::HasSubstr;

/// `depth` groups within each other, the root group among them, with these children in the innermost.
std::string nestedGroups(int depth, const std::string& innermost) {
    return "<KeePassFile><Root>" + repeated("<Group>", depth) + innermost + repeated("</Group>", depth) +
           "</Root></KeePassFile>";
}

std::string nestedElements(int depth) {
    return repeated("<F>", depth) + "x" + repeated("</F>", depth);
}

TEST(NestingTest, groupsAThousandDeepLoadAndSave) {
    const auto text = rewritten(nestedGroups(1000, "<Name>en iç</Name>"));
    EXPECT_THAT(text, HasSubstr("<Name>en iç</Name>"));
    EXPECT_EQ(rewritten(text), text);
}

TEST(NestingTest, foreignElementsAThousandDeepLoadAndSaveAtTheEndOfAThousandGroups) {
    const auto foreign = nestedElements(1000);
    const auto text = rewritten(nestedGroups(
        1000, foreign + "<Entry>" + foreign + "<History><Entry>" + foreign + "</Entry></History></Entry>"));
    EXPECT_THAT(text, HasSubstr("</AutoType>" + foreign + "</Entry></History>"));
    EXPECT_THAT(rewritten(text), HasSubstr(foreign));
}

TEST(NestingTest, foreignElementsOfMetaAndRootAThousandDeepLoadAndSave) {
    const auto foreign = nestedElements(1000);
    const auto text = rewritten(document({.meta = foreign, .group = "", .root = foreign}));
    EXPECT_THAT(text, HasSubstr(foreign + "</Meta>"));
    EXPECT_THAT(text, HasSubstr("</Group>" + foreign + "</Root>"));
}

/// Whether a document loads, and whether what is then saved loads with all of it.
bool survives(const std::string& xml, const std::string& part) {
    return failureOf(xml) == "none" && rewritten(rewritten(xml)).find(part) != std::string::npos;
}

TEST(NestingTest, whatLoadsAtTheLimitIsSavedWholeAndLoadsAgain) {
    const auto outside = nestedElements(2498);
    EXPECT_TRUE(
        survives("<KeePassFile><Meta>" + outside + "</Meta><Root><Group/></Root></KeePassFile>", outside + "</Meta>"));
    EXPECT_TRUE(survives("<KeePassFile><Root><Group/>" + outside + "</Root></KeePassFile>", outside + "</Root>"));
    const auto inEntry = nestedElements(2496);
    EXPECT_TRUE(survives(nestedGroups(1, "<Entry>" + inEntry + "</Entry>"), inEntry + "</Entry>"));
    EXPECT_TRUE(survives(nestedGroups(2496, "<Name>x</Name>"), "<Name>x</Name>"));
    EXPECT_TRUE(survives(nestedGroups(2495, "<Entry><Tags>x</Tags></Entry>"), "<Tags>x</Tags>"));
    EXPECT_TRUE(survives(nestedGroups(2493, "<Entry><History><Entry><Tags>x</Tags></Entry></History></Entry>"),
                         "<Tags>x</Tags>"));
}

TEST(NestingTest, whatWouldBeTooDeepOnceItIsSavedIsRefused) {
    const auto refused = "XML çözümlenemedi: belge çözümlenemedi";
    EXPECT_EQ(failureOf(nestedGroups(2497, "")), refused);
    EXPECT_EQ(failureOf(nestedGroups(2496, "<Entry/>")), refused);
    EXPECT_EQ(failureOf(nestedGroups(2494, "<Entry><History><Entry/></History></Entry>")), refused);
}

TEST(NestingTest, historyWithinHistoryIsReadToTheLimit) {
    const auto xml = nestedGroups(1, repeated("<Entry><History>", 1248) + repeated("</History></Entry>", 1248));
    auto depth = 0;
    auto entry = parse(xml).root.entries[0];
    while (!entry.historyItems.empty()) {
        entry = KdbxEntry(entry.historyItems[0]);
        ++depth;
    }
    EXPECT_EQ(depth, 1247);
}

/// So many groups within each other, and the innermost with these entries.
KdbxGroup chainOfGroups(int count, SharedArray<KdbxEntry> entries = {}) {
    KdbxGroup group;
    group.entries = std::move(entries);
    for (int level = 1; level < count; ++level) {
        KdbxGroup parent;
        parent.groups.append(std::move(group));
        group = std::move(parent);
    }
    return group;
}

KdbxEntry entryWith(const std::string& foreign) {
    KdbxEntry entry;
    entry.unknownXML = {foreign};
    return entry;
}

KdbxEntry withHistory(const KdbxEntry& item) {
    KdbxEntry entry;
    entry.historyItems.append(item);
    return entry;
}

/// Whether a tree is saved, and then loads; anything between the two would be a lost vault.
bool isSaved(const KdbxGroup& root) {
    try {
        const auto text = written(database({}, root));
        EXPECT_EQ(failureOf(text), "none");
        return true;
    } catch (const KdbxError& error) {
        EXPECT_EQ(error.errorDescription(),
                  "Gruplar ve kayıtlar bu kadar derin iç içe geçemez; böyle bir kasa bir daha açılamaz.");
        return false;
    }
}

TEST(NestingTest, whatIsSavedLoadsAgain) {
    EXPECT_TRUE(isSaved(chainOfGroups(2496)));
    EXPECT_FALSE(isSaved(chainOfGroups(2497)));
    EXPECT_FALSE(isSaved(chainOfGroups(100'000)));
    EXPECT_TRUE(isSaved(chainOfGroups(2495, {KdbxEntry()})));
    EXPECT_FALSE(isSaved(chainOfGroups(2496, {KdbxEntry()})));
    EXPECT_TRUE(isSaved(chainOfGroups(2493, {withHistory({})})));
    EXPECT_FALSE(isSaved(chainOfGroups(2494, {withHistory({})})));
    const auto foreign = entryWith(nestedElements(1000));
    EXPECT_TRUE(isSaved(chainOfGroups(1497, {foreign})));
    EXPECT_FALSE(isSaved(chainOfGroups(1498, {foreign})));
    EXPECT_TRUE(isSaved(chainOfGroups(1495, {withHistory(foreign)})));
    EXPECT_FALSE(isSaved(chainOfGroups(1496, {withHistory(foreign)})));
}

TEST(NestingTest, onlyOpenElementsCount) {
    const std::string padding(40'000, 'x');  // too long to be let through by its length alone
    for (const auto& [begin, inside] :
         std::vector<std::pair<std::string, std::string>>{{"<a b='>/>' c=\"'\">", "<b/><c>1</c><d x='1'/>"},
                                                          {"<a>", "<!-- <b><b><b> --><![CDATA[<b><b>]]><?p <b>?>"}}) {
        const auto foreign =
            entryWith(repeated(begin, 99) + "<e>" + inside + "</e>" + inside + padding + repeated("</a>", 99));
        const int inner = inside.starts_with("<b/>") ? 1 : 0;
        EXPECT_TRUE(isSaved(chainOfGroups(2397 - inner, {foreign}))) << inside;
        EXPECT_FALSE(isSaved(chainOfGroups(2398 - inner, {foreign}))) << inside;
    }
}

TEST(NestingTest, whatIsTooDeepForTheStackIsRefused) {
    const auto refused = "XML çözümlenemedi: belge çözümlenemedi";
    EXPECT_EQ(failureOf(nestedGroups(2499, "")), refused);
    EXPECT_EQ(failureOf(nestedGroups(100'000, "")), refused);
    EXPECT_EQ(failureOf(nestedGroups(1, nestedElements(100'000))), refused);
    EXPECT_EQ(failureOf(nestedGroups(1, repeated("<Entry><History>", 50'000) + repeated("</History></Entry>", 50'000))),
              refused);
}

TEST(NestingTest, foreignTextThatIsTooDeepIsLeftOut) {
    auto root = parse("<KeePassFile><Root><Group/></Root></KeePassFile>").root;
    root.unknownXML = {nestedElements(100'000), "<Kept/>"};
    EXPECT_THAT(written(database({}, root)), HasSubstr("<DefaultAutoTypeSequence/><Kept/></Group>"));
}

}  // namespace
