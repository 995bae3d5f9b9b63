// SPDX-License-Identifier: MIT
#include "tests/probe/ProbeAnswers.h"

#include <gtest/gtest.h>

namespace {

using Probe::Json;

}  // namespace

TEST(ProbePasswordsTest, estimatesAStrength) {
    EXPECT_EQ(resultOf({{"op", "strength"}, {"text", "Password123!"}}), (Json{{"score", 16}, {"entropyBits", 16.0}}));
    EXPECT_EQ(resultOf({{"op", "strength"}, {"text", ""}}), (Json{{"score", 0}, {"entropyBits", 0.0}}));
    expectRefusal({{"op", "strength"}});
}

TEST(ProbePasswordsTest, generatesByTheOptionsAndTheirDefaults) {
    EXPECT_EQ(resultOf({{"op", "generate"}, {"options", Json::object()}}).get<std::string>().size(), 20u);
    const auto digits = resultOf({{"op", "generate"},
                                  {"options",
                                   {{"length", 300},
                                    {"upper", false},
                                    {"lower", false},
                                    {"digits", true},
                                    {"symbols", false},
                                    {"excludeAmbiguous", true}}}})
                            .get<std::string>();
    EXPECT_EQ(digits.size(), 300u);
    EXPECT_EQ(digits.find_first_not_of("23456789"), std::string::npos);
    EXPECT_EQ(resultOf({{"op", "generate"}, {"options", {{"length", -1}}}}), "");
}

TEST(ProbePasswordsTest, refusesOptionsOfAnotherKind) {
    expectRefusal({{"op", "generate"}});
    expectRefusal({{"op", "generate"}, {"options", 20}});
    expectRefusal({{"op", "generate"}, {"options", {{"length", "20"}}}});
    expectRefusal({{"op", "generate"}, {"options", {{"length", 1e12}}}});
    expectRefusal({{"op", "generate"}, {"options", {{"length", 1'000'000'000'000}}}});
    expectRefusal({{"op", "generate"}, {"options", {{"upper", 1}}}});
}

TEST(ProbePasswordsTest, listsTheActionsOfASequence) {
    const Json entry{{"username", "ayşe"}, {"password", "gizli"}, {"customFields", {{"PIN", "1234"}}}};

    EXPECT_EQ(resultOf({{"op", "sequence"},
                        {"sequence", "{USERNAME}{TAB}{PASSWORD}{S:pin}{DELAY 500}{CLEARFIELD}{DELETE}"},
                        {"entry", entry}}),
              Json::array({{{"case", "text"}, {"value", "ayşe"}},
                           {{"case", "key"}, {"value", "tab"}},
                           {{"case", "text"}, {"value", "gizli1234"}},
                           {{"case", "delay"}, {"value", 500}},
                           {{"case", "clearField"}},
                           {{"case", "key"}, {"value", "delete"}}}));
    EXPECT_EQ(resultOf({{"op", "sequence"}, {"sequence", ""}, {"entry", Json::object()}}), Json::array());
    expectRefusal({{"op", "sequence"}, {"sequence", ""}});
}

TEST(ProbePasswordsTest, namesTheKeysOfASequence) {
    for (const std::string name :
         {"tab", "enter", "space", "backspace", "delete", "home", "end", "up", "down", "left", "right"})
        EXPECT_EQ(resultOf({{"op", "sequence"}, {"sequence", "{" + name + "}"}, {"entry", Json::object()}}),
                  Json::array({{{"case", "key"}, {"value", name}}}));
    EXPECT_EQ(resultOf({{"op", "sequence"}, {"sequence", "{ESC}"}, {"entry", Json::object()}}),
              Json::array({{{"case", "key"}, {"value", "escape"}}}));
}

TEST(ProbePasswordsTest, matchesAWindow) {
    EXPECT_EQ(resultOf({{"op", "windowMatch"}, {"title", "Banka - Giriş"}, {"entry", {{"title", "banka"}}}}), true);
    EXPECT_EQ(resultOf({{"op", "windowMatch"}, {"title", "Posta"}, {"entry", {{"title", "banka"}}}}), false);
    EXPECT_EQ(resultOf({{"op", "windowMatch"},
                        {"title", "signin"},
                        {"entry", {{"autoTypeWindowAssociations", {{{"window", "Sign*in"}}}}}}}),
              true);
    expectRefusal({{"op", "windowMatch"}, {"title", 1}, {"entry", Json::object()}});
}

TEST(ProbePasswordsTest, writesAHotKey) {
    EXPECT_EQ(resultOf({{"op", "hotKeyText"}, {"keyCode", 0}, {"modifiers", 2304}}), "⌥⌘A");
    EXPECT_EQ(resultOf({{"op", "hotKeyText"}, {"keyCode", 51}, {"modifiers", 0}}), "#51");
    expectRefusal({{"op", "hotKeyText"}, {"keyCode", -1}, {"modifiers", 0}});
}
