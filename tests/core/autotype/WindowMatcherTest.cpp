// SPDX-License-Identifier: MIT
#include "core/autotype/WindowMatcher.h"

namespace {

KdbxEntry titled(const std::string& title) {
    KdbxEntry entry;
    entry.title = title;
    return entry;
}

KdbxEntry withURL(const std::string& url) {
    KdbxEntry entry;
    entry.url = url;
    return entry;
}

KdbxEntry withWindows(const std::vector<std::string>& windows) {
    KdbxEntry entry;
    for (const auto& window : windows)
        entry.autoTypeWindowAssociations.push_back({.window = window, .sequence = {}});
    return entry;
}

bool matches(std::string_view windowTitle, const KdbxEntry& entry) {
    return WindowMatcher(windowTitle).matches(entry);
}

}  // namespace

TEST(WindowMatcherTest, findsNothingInAnEmptyTitle) {
    EXPECT_FALSE(matches("", titled("Banka")));
    EXPECT_FALSE(matches("", titled("")));
    EXPECT_FALSE(matches("", withWindows({"", "*"})));
}

TEST(WindowMatcherTest, findsTheTitleAnywhereWithoutRegardToLetterCase) {
    EXPECT_TRUE(matches("Banka - Giriş", titled("banka")));
    EXPECT_TRUE(matches("banka", titled("BANKA")));
    EXPECT_TRUE(matches("xbankax", titled("Banka")));
    EXPECT_TRUE(matches("Banka - GİRİŞ", titled("gİrİş")));
    EXPECT_FALSE(matches("Banka", titled("Banka - Giriş")));
    EXPECT_FALSE(matches("Posta", titled("Banka")));
}

TEST(WindowMatcherTest, lowersLettersWithNoLanguagesExceptions) {
    EXPECT_TRUE(matches("INTERNET", titled("internet")));
    EXPECT_FALSE(matches("ISPARTA", titled("ısparta")));
    EXPECT_TRUE(matches("ŞUBESİ", titled("şubesi")));  // "İ" becomes "i" with a dot above, which comes behind
}

TEST(WindowMatcherTest, findsATitleInAnotherSpelling) {
    EXPECT_TRUE(matches("S\xCC\xA7ube", titled("Şube")));
    EXPECT_TRUE(matches("Şube", titled("S\xCC\xA7ube")));
    EXPECT_FALSE(matches("s\xCC\xA7", titled("s")));
}

TEST(WindowMatcherTest, findsTheHostOfTheURLAlone) {
    EXPECT_TRUE(matches("Giriş | Banka.com.tr", withURL("https://www:x@BANKA.com.tr:443/sube?q")));
    EXPECT_FALSE(matches("Giriş | sube", withURL("https://banka.com.tr/sube")));
    EXPECT_FALSE(matches("https", withURL("https://banka.com.tr/sube")));
}

TEST(WindowMatcherTest, findsAURLWithoutAHostAsAWhole) {
    EXPECT_TRUE(matches("Giriş - banka.com/sube", withURL("banka.com/sube")));
    EXPECT_FALSE(matches("Giriş - banka.com", withURL("banka.com/sube")));
    EXPECT_TRUE(matches("mail mailto:a@b.c", withURL("mailto:a@b.c")));
    EXPECT_TRUE(matches("https://a b/c", withURL("https://a b/c")));
    EXPECT_FALSE(matches("a b", withURL("https://a b/c")));
}

TEST(WindowMatcherTest, findsNoEmptyHost) {
    EXPECT_FALSE(matches("file:///x", withURL("file:///x")));
}

TEST(WindowMatcherTest, deletesTheAsterisksOfAnAssociation) {
    EXPECT_TRUE(matches("Banka - Giriş", withWindows({"*Banka*"})));
    EXPECT_TRUE(matches("Banka - Giriş", withWindows({"banka"})));
    EXPECT_TRUE(matches("please signin here", withWindows({"Sign*in"})));
    EXPECT_FALSE(matches("please sign in here", withWindows({"Sign*in"})));
}

TEST(WindowMatcherTest, findsNothingInAnAssociationOfAsterisksAlone) {
    EXPECT_FALSE(matches("Banka * ***", withWindows({"*", "***", ""})));
}

TEST(WindowMatcherTest, triesEachAssociation) {
    EXPECT_TRUE(matches("Banka", withWindows({"*", "Posta", "Ban*"})));
    EXPECT_FALSE(matches("Banka", withWindows({"Posta", "Depo"})));
}

TEST(WindowMatcherTest, findsAnEntryWithNeitherTitleNorURLByAssociationsAlone) {
    EXPECT_FALSE(matches("Banka", KdbxEntry()));
    EXPECT_TRUE(matches("Banka", withWindows({"Banka"})));
}

TEST(WindowMatcherTest, triesTitleAndURLAndAssociations) {
    auto entry = withWindows({"Depo"});
    entry.title = "Banka";
    entry.url = "https://posta.org";

    EXPECT_TRUE(matches("banka", entry));
    EXPECT_TRUE(matches("posta.org", entry));
    EXPECT_TRUE(matches("depo", entry));
    EXPECT_FALSE(matches("sube", entry));
}

TEST(WindowMatcherTest, takesMetacharactersForThemselves) {
    EXPECT_FALSE(matches("Banka", titled("B.nka")));
    EXPECT_FALSE(matches("Banka", titled("^Banka$")));
    EXPECT_TRUE(matches("a.b (c)", titled("A.B (C)")));
}

TEST(WindowMatcherTest, choosesTheFirstMatchInTheOrderOfTheWalk) {
    KdbxGroup inner;
    inner.entries = {titled("Banka derin")};
    KdbxGroup first;
    first.entries = {titled("Posta"), titled("Banka")};
    first.groups = {inner};
    KdbxGroup second;
    second.entries = {titled("Banka")};
    KdbxGroup root;
    root.groups = {first, second};

    const auto* choice = WindowMatcher("Banka derin").firstMatch(root);
    ASSERT_NE(choice, nullptr);
    EXPECT_EQ(choice, &root.groups[0].entries[1]);

    const auto* deep = WindowMatcher("xanka derin").firstMatch(root);
    EXPECT_EQ(deep, nullptr);

    root.entries = {titled("Depo"), titled("derin")};
    EXPECT_EQ(WindowMatcher("Banka derin").firstMatch(root), &root.entries[1]);
}

TEST(WindowMatcherTest, passesOverEntriesThatDoNotWantAutoType) {
    auto disabled = titled("Banka");
    disabled.autoTypeEnabled = false;
    KdbxGroup root;
    root.entries = {disabled, titled("Banka")};

    EXPECT_EQ(WindowMatcher("Banka").firstMatch(root), &root.entries[1]);
    EXPECT_TRUE(WindowMatcher("Banka").matches(disabled));
}

TEST(WindowMatcherTest, choosesNothingWhereNothingMatches) {
    KdbxGroup root;
    EXPECT_EQ(WindowMatcher("Banka").firstMatch(root), nullptr);

    root.entries = {titled("Posta")};
    EXPECT_EQ(WindowMatcher("Banka").firstMatch(root), nullptr);
}
