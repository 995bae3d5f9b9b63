// SPDX-License-Identifier: MIT
#include "app/state/Preferences.h"

#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace {

using ::testing::Optional;
using ::testing::StrEq;

using PreferencesTest = StateTest;

TEST_F(PreferencesTest, aFirstLaunchHasTheDefaultsAndStoresNone) {
    EXPECT_EQ(preferences->clipboardTimeout(), 12.0);
    EXPECT_EQ(preferences->sortColumn(), "title");
    EXPECT_TRUE(preferences->sortAscending());
    EXPECT_EQ(preferences->defaultAutoTypeSequence(), "{USERNAME}{TAB}{PASSWORD}{ENTER}");
    EXPECT_EQ(preferences->hotKeyCode(), 0U);
    EXPECT_EQ(preferences->hotKeyModifiers(), 2304U);
    EXPECT_TRUE(preferences->lockWithSession());
    EXPECT_EQ(preferences->lockAfterMinutes(), 0);
    EXPECT_FALSE(preferences->recentDatabaseBookmark());
    EXPECT_EQ(preferences->generatorOptions(), PasswordGenerator::Options());
    EXPECT_TRUE(settings.values.empty());
}

TEST_F(PreferencesTest, everyAssignmentIsStoredUnderItsNameAndReadBack) {
    preferences->setClipboardTimeout(30.5);
    preferences->setSortColumn("modified");
    preferences->setSortAscending(false);
    preferences->setDefaultAutoTypeSequence("{PASSWORD}");
    preferences->setHotKeyCode(7);
    preferences->setHotKeyModifiers(4294967295U);
    preferences->setLockWithSession(false);
    preferences->setLockAfterMinutes(15);
    preferences->setRecentDatabaseBookmark(copyOf(bytesOf("yer imi")));

    EXPECT_EQ(settings.values.at("clipboardTimeout"), SettingsValue(30.5));
    EXPECT_EQ(settings.values.at("sortColumn"), SettingsValue("modified"));
    EXPECT_EQ(settings.values.at("sortAscending"), SettingsValue(false));
    EXPECT_EQ(settings.values.at("defaultAutoTypeSequence"), SettingsValue("{PASSWORD}"));
    EXPECT_EQ(settings.values.at("hotKeyCode"), SettingsValue(std::int64_t{7}));
    EXPECT_EQ(settings.values.at("hotKeyModifiers"), SettingsValue(std::int64_t{4294967295}));
    EXPECT_EQ(settings.values.at("lockWithSession"), SettingsValue(false));
    EXPECT_EQ(settings.values.at("lockAfterMinutes"), SettingsValue(std::int64_t{15}));
    EXPECT_EQ(settings.values.at("recentDatabaseBookmark"), SettingsValue(copyOf(bytesOf("yer imi"))));

    launch();
    EXPECT_EQ(preferences->clipboardTimeout(), 30.5);
    EXPECT_EQ(preferences->sortColumn(), "modified");
    EXPECT_FALSE(preferences->sortAscending());
    EXPECT_EQ(preferences->defaultAutoTypeSequence(), "{PASSWORD}");
    EXPECT_EQ(preferences->hotKeyCode(), 7U);
    EXPECT_EQ(preferences->hotKeyModifiers(), 4294967295U);
    EXPECT_FALSE(preferences->lockWithSession());
    EXPECT_EQ(preferences->lockAfterMinutes(), 15);
    EXPECT_EQ(preferences->recentDatabaseBookmark(), copyOf(bytesOf("yer imi")));
}

TEST_F(PreferencesTest, theWindowsLayoutIsStoredAndGivenUp) {
    preferences->setWindowSize(WindowSize{.width = 900, .height = 600, .isMaximised = true});
    preferences->setColumnWidths(ColumnWidths{.groups = 240, .entries = 300});
    launch();
    EXPECT_EQ(preferences->windowSize(), (WindowSize{.width = 900, .height = 600, .isMaximised = true}));
    EXPECT_EQ(preferences->columnWidths(), (ColumnWidths{.groups = 240, .entries = 300}));
    preferences->setWindowSize(std::nullopt);
    preferences->setColumnWidths(std::nullopt);
    EXPECT_TRUE(settings.values.empty());
}

TEST_F(PreferencesTest, aStoredSizeThatNoWindowHasCountsAsAbsent) {
    for (const std::int64_t side : {std::int64_t{0}, std::int64_t{-5}, std::int64_t{1} << 40}) {
        settings.values["windowSize"] = SettingsDictionary{{"width", side}, {"height", std::int64_t{600}}};
        settings.values["columnWidths"] = SettingsDictionary{{"groups", std::int64_t{200}}, {"entries", side}};
        launch();
        EXPECT_FALSE(preferences->windowSize()) << side;
        EXPECT_FALSE(preferences->columnWidths()) << side;
    }
    settings.values["windowSize"] = SettingsDictionary{{"width", std::int64_t{800}}};
    launch();
    EXPECT_FALSE(preferences->windowSize());
}

TEST_F(PreferencesTest, aBookmarkThatIsNoneIsRemoved) {
    preferences->setRecentDatabaseBookmark(copyOf(bytesOf("yer imi")));
    preferences->setRecentDatabaseBookmark(std::nullopt);
    EXPECT_FALSE(settings.values.contains("recentDatabaseBookmark"));
}

TEST_F(PreferencesTest, aStoredValueOfTheWrongKindCountsAsAbsent) {
    for (const auto* key : {"clipboardTimeout", "hotKeyCode", "hotKeyModifiers", "lockWithSession", "lockAfterMinutes",
                            "recentDatabaseBookmark"})
        settings.values.emplace(key, std::string("1"));
    settings.values.emplace("sortColumn", true);
    settings.values.emplace("sortAscending", std::string("false"));
    settings.values.emplace("defaultAutoTypeSequence", std::int64_t{1});

    launch();

    EXPECT_EQ(preferences->clipboardTimeout(), 12.0);
    EXPECT_EQ(preferences->sortColumn(), "title");
    EXPECT_TRUE(preferences->sortAscending());
    EXPECT_EQ(preferences->defaultAutoTypeSequence(), "{USERNAME}{TAB}{PASSWORD}{ENTER}");
    EXPECT_EQ(preferences->hotKeyCode(), 0U);
    EXPECT_EQ(preferences->hotKeyModifiers(), 2304U);
    EXPECT_TRUE(preferences->lockWithSession());
    EXPECT_EQ(preferences->lockAfterMinutes(), 0);
    EXPECT_FALSE(preferences->recentDatabaseBookmark());
}

TEST_F(PreferencesTest, minutesUntilALockAreBroughtIntoTheirRange) {
    const std::pair<std::int64_t, std::int64_t> cases[] = {{-1, 0},  {std::numeric_limits<std::int64_t>::min(), 0},
                                                           {61, 60}, {std::numeric_limits<std::int64_t>::max(), 60},
                                                           {0, 0},   {1, 1},
                                                           {60, 60}};
    for (const auto& [stored, minutes] : cases) {
        settings.values["lockAfterMinutes"] = stored;
        launch();
        EXPECT_EQ(preferences->lockAfterMinutes(), minutes) << stored;
    }
    preferences->setLockAfterMinutes(90);
    EXPECT_EQ(settings.values.at("lockAfterMinutes"), SettingsValue(std::int64_t{60}));
}

TEST_F(PreferencesTest, aTimeoutMayBeStoredWithoutAFraction) {
    settings.values.emplace("clipboardTimeout", std::int64_t{45});
    launch();
    EXPECT_EQ(preferences->clipboardTimeout(), 45.0);
}

TEST_F(PreferencesTest, theClipboardGetsTheTimeoutAtStartAndWithEachChange) {
    EXPECT_EQ(clipboard.clearAfter(), 12.0);
    preferences->setClipboardTimeout(45);
    EXPECT_EQ(clipboard.clearAfter(), 45.0);
    clipboard.setClearAfter(1);
    launch();
    EXPECT_EQ(clipboard.clearAfter(), 45.0);
}

TEST_F(PreferencesTest, generatorOptionsAreStoredWithAllTheirKeys) {
    const PasswordGenerator::Options options{
        .length = 8, .upper = false, .lower = true, .digits = false, .symbols = false, .excludeAmbiguous = true};
    preferences->setGeneratorOptions(options);
    EXPECT_EQ(settings.values.at("generatorOptions"), SettingsValue(SettingsDictionary{{"length", std::int64_t{8}},
                                                                                       {"upper", false},
                                                                                       {"lower", true},
                                                                                       {"digits", false},
                                                                                       {"symbols", false},
                                                                                       {"excludeAmbiguous", true}}));
    launch();
    EXPECT_EQ(preferences->generatorOptions(), options);
}

TEST_F(PreferencesTest, generatorOptionsWithoutALengthAreTheDefaults) {
    for (const auto& stored : {SettingsDictionary(), SettingsDictionary{{"upper", false}},
                               SettingsDictionary{{"length", "20"}, {"upper", false}},
                               SettingsDictionary{{"length", 20.5}, {"upper", false}}}) {
        settings.values.insert_or_assign("generatorOptions", stored);
        launch();
        EXPECT_EQ(preferences->generatorOptions(), PasswordGenerator::Options());
    }
    settings.values.insert_or_assign("generatorOptions", SettingsValue(true));
    launch();
    EXPECT_EQ(preferences->generatorOptions(), PasswordGenerator::Options());
}

TEST_F(PreferencesTest, generatorOptionsWithALengthAloneHaveAllClasses) {
    settings.values.insert_or_assign("generatorOptions",
                                     SettingsDictionary{{"length", std::int64_t{33}}, {"excludeAmbiguous", "yes"}});
    launch();
    EXPECT_EQ(preferences->generatorOptions(), PasswordGenerator::Options{.length = 33});
}

TEST_F(PreferencesTest, aStoredTimeoutOfNothingIsNotReplaced) {
    settings.values.emplace("clipboardTimeout", 0.0);
    launch();
    EXPECT_EQ(preferences->clipboardTimeout(), 0.0);
}

TEST_F(PreferencesTest, aStoredTimeoutIsBroughtIntoItsRange) {
    constexpr auto infinity = std::numeric_limits<double>::infinity();
    for (const auto& [stored, read] : std::vector<std::pair<double, double>>{{-1, 0},
                                                                             {-infinity, 0},
                                                                             {0.25, 0.25},
                                                                             {300, 300},
                                                                             {3600, 3600},
                                                                             {3601, 3600},
                                                                             {1e300, 3600},
                                                                             {infinity, 3600},
                                                                             {std::nan(""), 12}}) {
        settings.values.insert_or_assign("clipboardTimeout", stored);
        launch();
        EXPECT_EQ(preferences->clipboardTimeout(), read) << stored;
        EXPECT_EQ(clipboard.clearAfter(), read) << stored;
    }
    settings.values.insert_or_assign("clipboardTimeout", std::numeric_limits<std::int64_t>::max());
    launch();
    EXPECT_EQ(preferences->clipboardTimeout(), 3600);
}

TEST_F(PreferencesTest, aStoredLengthIsBroughtIntoItsRange) {
    for (const auto& [stored, read] :
         std::vector<std::pair<std::int64_t, std::int64_t>>{{std::numeric_limits<std::int64_t>::min(), 6},
                                                            {0, 6},
                                                            {5, 6},
                                                            {6, 6},
                                                            {128, 128},
                                                            {129, 128},
                                                            {1'000'000'000, 128},
                                                            {std::numeric_limits<std::int64_t>::max(), 128}}) {
        settings.values.insert_or_assign("generatorOptions", SettingsDictionary{{"length", stored}});
        launch();
        EXPECT_EQ(preferences->generatorOptions().length, read) << stored;
    }
}

TEST_F(PreferencesTest, aSettingThatCannotBeStoredHoldsAllTheSameAndIsReportedOnce) {
    settings.isWritable = false;
    preferences->setHotKeyCode(7);
    EXPECT_EQ(preferences->hotKeyCode(), 7U);
    EXPECT_THAT(
        state->lastError(),
        Optional(StrEq("Ayarlar kaydedilemiyor; yaptığın değişiklikler yalnızca program kapanana kadar geçerli.")));

    state->setLastError(std::nullopt);
    preferences->setHotKeyCode(8);
    preferences->setClipboardTimeout(20);
    EXPECT_FALSE(state->lastError());
}

TEST_F(PreferencesTest, aHotKeyThatNoKeyboardHasCountsAsAbsent) {
    for (const std::int64_t number : {std::int64_t{-1}, std::int64_t{4294967296}}) {
        settings.values.insert_or_assign("hotKeyCode", number);
        settings.values.insert_or_assign("hotKeyModifiers", number);
        launch();
        EXPECT_EQ(preferences->hotKeyCode(), 0U);
        EXPECT_EQ(preferences->hotKeyModifiers(), 2304U);
    }
}

TEST_F(PreferencesTest, aChangeIsReportedAndARepetitionIsNot) {
    int changes = 0;
    QObject::connect(&*preferences, &Preferences::hotKeyCodeChanged, &*preferences, [&] { ++changes; });
    preferences->setHotKeyCode(3);
    preferences->setHotKeyCode(3);
    EXPECT_EQ(changes, 1);
}

TEST_F(PreferencesTest, theListStartsWithTheStoredSort) {
    preferences->setSortColumn("username");
    preferences->setSortAscending(false);
    launch();
    EXPECT_EQ(state->sort(), (EntrySort{.column = EntrySort::Column::username, .ascending = false}));
}

TEST_F(PreferencesTest, aStoredSortThatNamesNoColumnIsByTitle) {
    preferences->setSortColumn("Title");
    preferences->setSortAscending(false);
    launch();
    EXPECT_EQ(state->sort(), (EntrySort{.column = EntrySort::Column::title, .ascending = false}));
    EXPECT_EQ(settings.values.at("sortColumn"), SettingsValue("Title")) << "reading writes nothing back";
}

TEST_F(PreferencesTest, aChosenSortIsStoredAndTheSameOneIsNot) {
    state->setSort({.column = EntrySort::Column::title, .ascending = true});
    EXPECT_TRUE(settings.values.empty());
    state->setSort({.column = EntrySort::Column::url, .ascending = false});
    EXPECT_EQ(settings.values.at("sortColumn"), SettingsValue("url"));
    EXPECT_EQ(settings.values.at("sortAscending"), SettingsValue(false));
}

}  // namespace
