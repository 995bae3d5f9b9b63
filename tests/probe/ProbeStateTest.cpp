// SPDX-License-Identifier: MIT
#include "tests/probe/Probe.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace {

using Probe::Json;
namespace fs = std::filesystem;

const std::string id1 = "00000000-0000-0000-0000-000000000001";
const std::string id2 = "00000000-0000-0000-0000-000000000002";
const std::string id3 = "00000000-0000-0000-0000-000000000003";

/// One probe, with an open vault made at the clock's start in a folder of the test's own.
class ProbeStateTest : public ::testing::Test {
protected:
    ProbeStateTest() {
        Probe::addState(operations);
        fs::create_directories(folder);
    }
    ~ProbeStateTest() override { fs::remove_all(folder); }

    Json appAnswer(Json request) {
        request["op"] = "app";
        return Json::parse(Probe::answer(operations, request.dump()));
    }
    Json stateAfter(const Json& request) {
        const auto answer = appAnswer(request);
        EXPECT_EQ(answer["ok"], true) << answer;
        return answer.value("result", Json());
    }
    Json call(const std::string& name, const Json& arguments = Json::array()) {
        return stateAfter({{"call", name}, {"args", arguments}});
    }
    Json set(const std::string& name, const Json& value) { return stateAfter({{"set", name}, {"value", value}}); }
    Json advance(double seconds) { return stateAfter({{"advance", seconds}}); }
    Json now() { return stateAfter({{"advance", 0}, {"full", true}}); }

    /// Opens a small vault that another writer made.
    void open() {
        const auto answer = Json::parse(std::ifstream(vault + ".json"));
        fs::copy_file(vault + ".kdbx", file);
        call("prepare", {file});
        const auto state = call("unlock", {answer["password"], nullptr});
        ASSERT_EQ(state["isLocked"], false) << state;
        rootID = now()["database"]["root"]["id"];
    }

    const std::string vault = std::string(BRENVIK_TEST_DATA) + "/vaults/v10-4.0-chacha20-aes";
    const fs::path folder = fs::temp_directory_path() / ("brenvik-probe-state-" + std::to_string(::getpid()));
    const std::string file = (folder / "Ev.kdbx").native();
    Probe::Operations operations;
    std::string rootID;
};

TEST_F(ProbeStateTest, startsWithoutAVaultAndWithNothingStored) {
    const auto state = now();

    EXPECT_EQ(state["databaseURL"], nullptr);
    EXPECT_EQ(state["databaseName"], "Brenvik");
    EXPECT_EQ(state["isLocked"], true);
    EXPECT_EQ(state["isDirty"], false);
    EXPECT_EQ(state["canSave"], false);
    for (const char* none : {"lastError", "statusMessage", "selectedGroupID", "route", "undoLabel", "redoLabel",
                             "focusedEntry", "database"})
        EXPECT_EQ(state[none], nullptr) << none;
    for (const char* empty : {"selectedEntryIDs", "visibleEntries", "typed"})
        EXPECT_EQ(state[empty], Json::array()) << empty;
    EXPECT_EQ(state["searchText"], "");
    EXPECT_EQ(state["searchFocusToken"], 0);
    EXPECT_EQ(state["sort"], (Json{{"column", "title"}, {"ascending", true}}));
    EXPECT_EQ(state["clipboard"], (Json{{"text", ""}, {"types", Json::array()}, {"secondsRemaining", 0}}));
    EXPECT_EQ(state["preferences"], Json::object());
}

TEST_F(ProbeStateTest, makesAVaultAtTheClocksTimeAndOpensItAgain) {
    advance(60);
    auto state = stateAfter({{"call", "createDatabase"}, {"args", {file, "parola", nullptr}}, {"full", true}});
    EXPECT_EQ(state["database"]["root"]["created"], 1'704'067'260.0);
    EXPECT_EQ(state["databaseName"], "Ev");
    EXPECT_TRUE(state["preferences"].contains("recentDatabaseBookmark"));
    call("lock");

    EXPECT_EQ(call("unlock", {"yanlış"})["lastError"], "Ana parola veya anahtar dosyası hatalı.");
    EXPECT_EQ(call("unlock", {"parola"})["isLocked"], false);
}

TEST_F(ProbeStateTest, callsEveryVerb) {
    open();

    call("addGroup", {{{"id", id1}, {"name", "Grup"}, {"groups", {{{"id", id3}, {"name", "Alt"}}}}}, rootID});
    EXPECT_EQ(now()["selectedGroupID"], id1);
    auto state = call("addEntry", {{{"id", id2}, {"title", "Kayıt"}, {"username", "ali"}}, id1});
    EXPECT_EQ(state["focusedEntry"], id2);
    EXPECT_EQ(state["visibleEntries"], Json::array({id2}));
    EXPECT_EQ(state["undoLabel"], "Kayıt Ekle");
    call("updateEntry", {{{"id", id2}, {"title", "Yeni"}, {"password", "gizli"}, {"url", "a.example"}}});
    call("duplicateEntries", {{id2}});
    const std::string copy = now()["focusedEntry"];
    set("sort", {{"column", "manual"}, {"ascending", true}});
    EXPECT_EQ(call("moveEntriesBefore", {{copy}, id2})["visibleEntries"], Json::array({copy, id2}));
    EXPECT_EQ(call("moveEntriesToEnd", {{copy}})["visibleEntries"], Json::array({id2, copy}));
    EXPECT_EQ(call("moveEntriesTo", {{copy}, id3})["visibleEntries"], Json::array({id2}));
    EXPECT_EQ(call("deleteEntries", {{copy}})["undoLabel"], "Kaydı Sil");
    EXPECT_EQ(call("undo")["redoLabel"], "Kaydı Sil");
    EXPECT_EQ(call("redo")["undoLabel"], "Kaydı Sil");
    call("setGroupExpanded", {id1, false});
    call("updateGroup", {{{"id", id1}, {"name", "Grubum"}}});
    call("selectEntry", {id2, false, false});
    EXPECT_EQ(call("copyPassword")["clipboard"]["text"], "gizli");
    EXPECT_EQ(call("copyUsername", {nullptr})["statusMessage"], "Kullanıcı adı kopyalandı");
    EXPECT_EQ(call("copyURL", {{{"id", id2}, {"url", "b.example"}}})["clipboard"]["text"], "b.example");
    call("openURL");
    call("save");
    EXPECT_EQ(now()["isDirty"], false);
    call("saveAs", {(folder / "İş.kdbx").native()});
    EXPECT_EQ(now()["databaseName"], now()["databaseName"]);
    EXPECT_EQ(call("focusSearch")["searchFocusToken"], 1);
    call("deleteGroup", {id1});
    EXPECT_EQ(now()["selectedGroupID"], rootID);
    call("closeDatabase");
    EXPECT_EQ(call("restoreRecentDatabase")["databaseURL"], (folder / "İş.kdbx").native());
}

TEST_F(ProbeStateTest, setsEveryProperty) {
    set("lastError", "hata");
    set("statusMessage", "söz");
    set("selectedGroupID", id1);
    set("selectedEntryIDs", {id3, id2});
    set("searchText", "ara");
    set("sort", {{"column", "url"}, {"ascending", false}});
    set("route", {{"case", "generator"}, {"target", nullptr}});
    auto state = now();
    EXPECT_EQ(state["lastError"], "hata");
    EXPECT_EQ(state["statusMessage"], "söz");
    EXPECT_EQ(state["selectedGroupID"], id1);
    EXPECT_EQ(state["selectedEntryIDs"], Json::array({id2, id3}));
    EXPECT_EQ(state["searchText"], "ara");
    EXPECT_EQ(state["route"], "generator--");
    EXPECT_EQ(call("clearSearch")["searchText"], "");
    EXPECT_EQ(set("route", {{"case", "editEntry"}, {"id", id1}})["route"], "editEntry-" + id1);
    EXPECT_EQ(set("route", nullptr)["route"], nullptr);

    const Json options{{"length", 8},    {"upper", true},    {"lower", false},
                       {"digits", true}, {"symbols", false}, {"excludeAmbiguous", true}};
    set("clipboardTimeout", 30);
    set("sortColumn", "modified");
    set("sortAscending", true);
    set("defaultAutoTypeSequence", "{PASSWORD}");
    set("hotKeyCode", 12);
    set("hotKeyModifiers", 256);
    set("recentDatabaseBookmark", "00ff");
    set("generatorOptions", options);
    set("clearAfter", 5);
    state = now();
    EXPECT_EQ(state["preferences"]["clipboardTimeout"], 30);
    EXPECT_EQ(state["preferences"]["sortColumn"], "modified");
    EXPECT_EQ(state["preferences"]["sortAscending"], true);
    EXPECT_EQ(state["preferences"]["defaultAutoTypeSequence"], "{PASSWORD}");
    EXPECT_EQ(state["preferences"]["hotKeyCode"], 12);
    EXPECT_EQ(state["preferences"]["hotKeyModifiers"], 256);
    EXPECT_EQ(state["preferences"]["recentDatabaseBookmark"], "00ff");
    for (const auto& [key, value] : options.items())
        EXPECT_EQ(state["preferences"]["generatorOptions"][key], value) << key;
    EXPECT_EQ(set("recentDatabaseBookmark", nullptr)["preferences"].contains("recentDatabaseBookmark"), false);
    EXPECT_EQ(call("copySecret", {"x"})["clipboard"]["secondsRemaining"], 5);
}

TEST_F(ProbeStateTest, timeStandsStillUntilItIsMoved) {
    call("copySecret", {"gizli"});
    EXPECT_EQ(advance(11.5)["clipboard"]["secondsRemaining"], 1);
    EXPECT_EQ(advance(0.5)["clipboard"]["text"], "");
    call("copySecret", {"gizli"});
    stateAfter({{"clipboardWrite", "başka"}});
    EXPECT_EQ(advance(100)["clipboard"]["text"], "başka");
}

TEST_F(ProbeStateTest, theHotKeyTypesIntoTheWindowInFront) {
    open();
    call("addEntry", {{{"id", id2}, {"title", "Banka"}, {"username", "aA"}, {"password", "ş"}}, rootID});
    stateAfter({{"front", {{"pid", 7}, {"title", "Banka - Giriş"}, {"name", "Gezgin"}}}});

    EXPECT_EQ(stateAfter({{"hotKey", true}})["typed"], Json::array());
    const auto typed = advance(10)["typed"];

    const auto event = [](int code, bool down, int flags) {
        return Json{{"code", code}, {"down", down}, {"flags", flags}};
    };
    ASSERT_EQ(typed.size(), 12U) << typed;
    EXPECT_EQ(typed[0], event(0, true, 0));
    EXPECT_EQ(typed[1], event(0, false, 0));
    EXPECT_EQ(typed[2], event(56, true, 0x20000));
    EXPECT_EQ(typed[5], event(56, false, 0));
    EXPECT_EQ(typed[6], event(48, true, 0));
    EXPECT_EQ(typed[8], (Json{{"code", 0}, {"down", true}, {"flags", 0}, {"text", "ş"}}));
    EXPECT_EQ(typed[11], event(36, false, 0));
}

TEST_F(ProbeStateTest, aPressWithoutAMatchIsReported) {
    open();
    stateAfter({{"front", {{"pid", 7}, {"title", "zzz"}, {"name", nullptr}}}});
    stateAfter({{"hotKey", true}});

    EXPECT_EQ(advance(0)["lastError"], "Ön plandaki pencereyle eşleşen bir kayıt bulunamadı.");
}

TEST_F(ProbeStateTest, typingWithoutATargetIsReported) {
    call("performAutoType", {{{"title", "x"}, {"password", "y"}}});

    EXPECT_EQ(advance(0)["lastError"], "Yazılacak hedef uygulama bulunamadı.");
    stateAfter({{"front", {{"pid", 7}, {"title", "a"}, {"name", "b"}}}});
    stateAfter({{"front", nullptr}});
    call("performAutoType", {{{"title", "x"}, {"autoTypeSequence", "a"}}});
    EXPECT_EQ(advance(5)["typed"].size(), 2U);
}

TEST_F(ProbeStateTest, aRestartKeepsTheWorldAndForgetsTheProgram) {
    open();
    call("addEntry", {{{"id", id2}, {"title", "Yeni"}}, rootID});
    set("clipboardTimeout", 40);
    call("performAutoType", {{{"autoTypeSequence", "a"}}});
    call("copySecret", {"gizli"});
    advance(100);
    call("copySecret", {"gizli"});
    call("copyPlain", {"kalır"});

    const auto state = stateAfter({{"restart", true}, {"full", true}});

    EXPECT_EQ(state["databaseURL"], file);
    EXPECT_EQ(state["isLocked"], true);
    EXPECT_EQ(state["isDirty"], false);
    EXPECT_EQ(state["undoLabel"], nullptr);
    EXPECT_EQ(state["preferences"]["clipboardTimeout"], 40);
    EXPECT_EQ(state["clipboard"]["text"], "kalır");
    EXPECT_EQ(advance(100)["lastError"], nullptr);
}

TEST_F(ProbeStateTest, aRestartTakesASecretOffTheClipboard) {
    call("copySecret", {"gizli"});
    call("performAutoType", {{{"autoTypeSequence", "a"}}});

    EXPECT_EQ(stateAfter({{"restart", true}})["clipboard"]["text"], "");
    EXPECT_EQ(advance(100)["typed"], Json::array());
}

TEST_F(ProbeStateTest, refusesWhatIsNoRequest) {
    const auto before = now();
    const Json group{{"id", id1}, {"groups", {1}}};
    for (const Json& request : std::initializer_list<Json>{Json::object(),
                                                           {{"call", "unknown"}},
                                                           {{"call", 1}},
                                                           {{"call", "prepare"}},
                                                           {{"call", "lock"}, {"args", 1}},
                                                           {{"call", "unlock"}, {"args", {nullptr}}},
                                                           {{"call", "deleteEntries"}, {"args", {"x"}}},
                                                           {{"call", "deleteEntries"}, {"args", {Json::array({"x"})}}},
                                                           {{"call", "deleteGroup"}, {"args", {"x"}}},
                                                           {{"call", "addGroup"}, {"args", {group, id1}}},
                                                           {{"call", "addGroup"}, {"args", {nullptr, id1}}},
                                                           {{"call", "createDatabase"}, {"args", {"x", "y", "zz"}}},
                                                           {{"set", "unknown"}, {"value", 1}},
                                                           {{"set", "searchText"}},
                                                           {{"set", "searchText"}, {"value", nullptr}},
                                                           {{"set", "hotKeyCode"}, {"value", -1}},
                                                           {{"set", "route"}, {"value", {{"case", "x"}}}},
                                                           {{"set", "sort"}, {"value", {{"column", "x"}}}},
                                                           {{"set", "generatorOptions"}, {"value", Json::object()}},
                                                           {{"advance", -1}},
                                                           {{"advance", "1"}},
                                                           {{"advance", 1e300}},
                                                           {{"front", 1}},
                                                           {{"front", Json::object()}},
                                                           {{"hotKey", 1}},
                                                           {{"restart", 1}},
                                                           {{"clipboardWrite", 1}},
                                                           {{"call", "lock"}, {"full", 1}}})
        EXPECT_EQ(appAnswer(request)["case"], "probe") << request;
    EXPECT_EQ(now(), before);

    std::string deep = R"({"op":"app","call":"addGroup","args":[)";
    for (int i = 0; i < 100'000; ++i)
        deep += R"({"groups":[)";
    EXPECT_EQ(Json::parse(Probe::answer(operations, deep))["case"], "probe");
}

TEST_F(ProbeStateTest, takesAGroupAThousandDeep) {
    open();
    Json group{{"name", "en alt"}};
    for (int depth = 1; depth < 1000; ++depth)
        group = Json{{"groups", Json::array({std::move(group)})}};
    group["id"] = id1;

    EXPECT_EQ(call("addGroup", Json::array({group, rootID}))["selectedGroupID"], id1);
}

}  // namespace
