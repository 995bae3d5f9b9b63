// SPDX-License-Identifier: MIT
#include "tests/probe/ProbeAnswers.h"
#include "tests/probe/ProbeEntry.h"
#include "tests/support/VaultJSON.h"

#include <gtest/gtest.h>

namespace {

using Probe::Json;

Json idOf(int number) {
    return "00000000-0000-0000-0000-00000000000" + std::to_string(number);
}

TEST(ProbeBrowsingTest, anEntryWithEveryFieldIsReadAsItIsWritten) {
    const Json fields{{"id", "01234567-89AB-CDEF-0123-456789ABCDEF"},
                      {"title", "başlık"},
                      {"username", "kullanıcı"},
                      {"password", "gizli"},
                      {"url", "https://ornek.test"},
                      {"notes", "not"},
                      {"customFields", {{"alan", "değer"}, {"başka", ""}}},
                      {"protectedCustomFields", {"alan"}},
                      {"tags", {"b", "a"}},
                      {"autoTypeSequence", "{TAB}"},
                      {"autoTypeEnabled", false},
                      {"autoTypeWindowAssociations",
                       {{{"window", "*a*"}, {"sequence", nullptr}}, {{"window", ""}, {"sequence", "x"}}}},
                      {"iconID", 7},
                      {"created", 1.5},
                      {"modified", 2.0},
                      {"accessed", -3.0},
                      {"expires", true},
                      {"expiryTime", 4.25},
                      {"historyItems", Json::array()},
                      {"unknownXML", {"<a/>"}}};
    EXPECT_EQ(VaultJSON::of(Probe::entryOf(fields)), fields);

    auto withHistory = fields;
    withHistory["historyItems"] = Json::array({fields});
    EXPECT_EQ(VaultJSON::of(Probe::entryOf(withHistory)), withHistory);
}

TEST(ProbeBrowsingTest, anEntryWithoutFieldsHasItsStartValues) {
    const auto entry = Probe::entryOf(Json::object());
    EXPECT_EQ(entry.title, "");
    EXPECT_TRUE(entry.autoTypeEnabled);
    EXPECT_FALSE(entry.autoTypeSequence);
    EXPECT_FALSE(Probe::entryOf({{"autoTypeSequence", nullptr}}).autoTypeSequence);
}

TEST(ProbeBrowsingTest, aFieldOfAnotherKindIsRefused) {
    for (const auto* name : {"id", "title", "password", "customFields", "protectedCustomFields", "tags",
                             "autoTypeSequence", "autoTypeEnabled", "autoTypeWindowAssociations", "iconID", "created",
                             "expiryTime", "historyItems", "unknownXML"})
        EXPECT_THROW(static_cast<void>(Probe::entryOf({{name, Json::array({Json::array()})}})), Probe::Refusal) << name;
    EXPECT_THROW(static_cast<void>(Probe::entryOf({{"id", "1234"}})), Probe::Refusal);
    EXPECT_THROW(static_cast<void>(Probe::entryOf({{"customFields", {{"a", 1}}}})), Probe::Refusal);
    EXPECT_THROW(static_cast<void>(Probe::entryOf({{"autoTypeWindowAssociations", {{{"sequence", "x"}}}}})),
                 Probe::Refusal);
    EXPECT_THROW(static_cast<void>(Probe::entryOf("")), Probe::Refusal);
}

TEST(ProbeBrowsingTest, searchMatchReportsWhetherAnEntryHasTheWords) {
    const Json entry{
        {"title", "Posta"}, {"notes", "ev"}, {"customFields", {{"pin", "42"}}}, {"protectedCustomFields", {"pin"}}};
    const auto matches = [&](const char* query) {
        return answerTo({{"op", "searchMatch"}, {"query", query}, {"entry", entry}});
    };
    EXPECT_EQ(matches("EV pos"), (Json{{"ok", true}, {"result", true}}));
    EXPECT_EQ(matches("42"), (Json{{"ok", true}, {"result", false}}));
}

TEST(ProbeBrowsingTest, sortGivesTheIdsInOrder) {
    const Json entries{{{"id", idOf(1)}, {"title", "b"}, {"modified", 1}},
                       {{"id", idOf(2)}, {"title", "A"}, {"modified", 2}},
                       {{"id", idOf(3)}, {"title", "b"}, {"modified", 0.5}}};
    const auto sorted = [&](const char* column, bool ascending) {
        return answerTo({{"op", "sort"}, {"column", column}, {"ascending", ascending}, {"entries", entries}})["result"];
    };
    EXPECT_EQ(sorted("title", true), (Json{idOf(2), idOf(1), idOf(3)}));
    EXPECT_EQ(sorted("title", false), (Json{idOf(3), idOf(1), idOf(2)}));
    EXPECT_EQ(sorted("modified", true), (Json{idOf(3), idOf(1), idOf(2)}));
    EXPECT_EQ(sorted("manual", false), (Json{idOf(1), idOf(2), idOf(3)}));
}

TEST(ProbeBrowsingTest, wrongArgumentsAreRefused) {
    const Json good{{"op", "sort"}, {"column", "title"}, {"ascending", true}, {"entries", Json::array()}};
    EXPECT_EQ(answerTo(good), (Json{{"ok", true}, {"result", Json::array()}}));
    for (const auto& [name, value] : {std::pair<const char*, Json>("column", "Title"),
                                      {"column", 1},
                                      {"ascending", 1},
                                      {"entries", 1},
                                      {"entries", {1}},
                                      {"entries", {Json::object()}}}) {
        auto bad = good;
        bad[name] = value;
        expectRefusal(bad);
        bad.erase(name);
        expectRefusal(bad);
    }
    expectRefusal({{"op", "searchMatch"}, {"query", "a"}});
    expectRefusal({{"op", "searchMatch"}, {"entry", Json::object()}});
}

}  // namespace
