// SPDX-License-Identifier: MIT
#include "core/document/KdbxDate.h"

#include "core/primitives/Base64.h"
#include "core/primitives/LittleEndian.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double y2001 = 978307200;
constexpr double y2020 = 1577934245;  // 2020-01-02T03:04:05Z

std::string binary(std::int64_t count) {
    Bytes bytes;
    appendLE(bytes, count);
    return Base64::encode(bytes);
}

std::optional<double> parsed(std::string_view text) {
    const auto date = KdbxDate::parse(text);
    return date ? std::optional(date->seconds) : std::nullopt;
}

TEST(KdbxDateTest, theEpochIsElevenLettersAAndAnEqualsSign) {
    EXPECT_EQ(KdbxDate::base64(KdbxDate::epoch), "AAAAAAAAAAA=");
    EXPECT_EQ(KdbxDate::epoch.seconds, -62135596800.0);
}

TEST(KdbxDateTest, theBinaryFormRoundsHalvesAwayFromZero) {
    const auto count = static_cast<std::int64_t>(y2001 + 62135596800);
    EXPECT_EQ(KdbxDate::base64({y2001 + 0.5}), binary(count + 1));
    EXPECT_EQ(KdbxDate::base64({y2001 + 0.4}), binary(count));
    EXPECT_EQ(KdbxDate::base64({KdbxDate::epoch.seconds - 0.5}), binary(-1));
    EXPECT_EQ(KdbxDate::base64({KdbxDate::epoch.seconds - 1.4}), binary(-1));
}

TEST(KdbxDateTest, timesBeforeTheEpochKeepTheirSign) {
    EXPECT_EQ(KdbxDate::base64({KdbxDate::epoch.seconds - 3600}), binary(-3600));
    EXPECT_EQ(parsed(binary(-3600)), KdbxDate::epoch.seconds - 3600);
}

TEST(KdbxDateTest, theVersionChoosesTheWrittenForm) {
    EXPECT_EQ(KdbxDate::encode({y2020}, 3), "2020-01-02T03:04:05Z");
    EXPECT_EQ(KdbxDate::encode({y2020}, 4), KdbxDate::base64({y2020}));
    EXPECT_EQ(KdbxDate::encode({y2020}, 5), KdbxDate::base64({y2020}));
}

TEST(KdbxDateTest, theISOFormHasWholeSecondsInUTC) {
    EXPECT_EQ(KdbxDate::iso8601({y2020 + 0.999}), "2020-01-02T03:04:05Z");
    EXPECT_EQ(KdbxDate::iso8601({-0.5}), "1969-12-31T23:59:59Z");
    EXPECT_EQ(KdbxDate::iso8601({951782400}), "2000-02-29T00:00:00Z");
    EXPECT_EQ(KdbxDate::iso8601(KdbxDate::epoch), "0001-01-01T00:00:00Z");
    EXPECT_EQ(KdbxDate::iso8601({253402300800}), "10000-01-01T00:00:00Z");
}

TEST(KdbxDateTest, eachISOFormIsRead) {
    EXPECT_EQ(parsed("2020-01-02T03:04:05Z"), y2020);
    EXPECT_EQ(parsed("2020-01-02T03:04:05.678Z"), y2020 + 0.678);
    EXPECT_EQ(parsed("2020-01-02T03:04:05+02:00"), y2020 - 7200);
    EXPECT_EQ(parsed("2020-01-02T03:04:05-02:30"), y2020 + 9000);
    EXPECT_EQ(parsed("2020-01-02T03:04:05+00:00"), y2020);
    EXPECT_EQ(parsed("0001-01-01T00:00:00Z"), KdbxDate::epoch.seconds);
    EXPECT_EQ(parsed("10000-01-01T00:00:00Z"), 253402300800);
    EXPECT_EQ(parsed("1900-02-28T00:00:00Z"), -2203977600);
    EXPECT_EQ(parsed(" \n\u00A02020-01-02T03:04:05Z\t"), y2020);
}

TEST(KdbxDateTest, nothingElseIsATime) {
    for (const auto* text : {"",
                             "   ",
                             "-",
                             ":",
                             "2020-01-02",
                             "2020-01-02T03:04Z",
                             "2020-01-02 03:04:05Z",
                             "2020-01-02T03:04:05",
                             "2020-1-2T3:4:5Z",
                             "20-01-02T03:04:05Z",
                             "2020-13-02T03:04:05Z",
                             "2020-00-02T03:04:05Z",
                             "2020-01-00T03:04:05Z",
                             "2019-02-29T00:00:00Z",
                             "2020-02-30T00:00:00Z",
                             "2020-01-02T24:00:00Z",
                             "2020-01-02T03:60:00Z",
                             "2020-01-02T03:04:60Z",
                             "0000-01-01T00:00:00Z",
                             "-2020-01-02T03:04:05Z",
                             "2020-01-02T03:04:05z",
                             "2020-01-02T03:04:05.Z",
                             "2020-01-02T03:04:05.67Z",
                             "2020-01-02T03:04:05.6789Z",
                             "2020-01-02T03:04:05.678+02:00",
                             "2020-01-02T03:04:05+0200",
                             "2020-01-02T03:04:05+24:00",
                             "2020-01-02T03:04:05+02:60",
                             "2020-01-02T03:04:05+",
                             "2020-01-02T03:04:05Zx",
                             "x2020-01-02T03:04:05Z",
                             "2020-01-02T03:04:05ZZ",
                             "32768-01-01T00:00:00Z",
                             "99999-01-01T00:00:00Z",
                             "1234567-01-01T00:00:00Z",
                             "2020-01-02T03:04:05+02-00",
                             "2020:01:02T03-04-05Z",
                             "AAAAAAAAAAA=:",
                             "-AAAAAAAAAAA="})
        EXPECT_FALSE(parsed(text)) << text;
}

TEST(KdbxDateTest, theBinaryFormIsReadByItsLook) {
    EXPECT_EQ(parsed("AAAAAAAAAAA="), KdbxDate::epoch.seconds);
    EXPECT_EQ(parsed(" AAAA\nAAAA AAA= "), KdbxDate::epoch.seconds);
    EXPECT_EQ(parsed(KdbxDate::base64({y2020})), y2020);
    Bytes longer(8, 0);
    longer.push_back(0xFF);
    EXPECT_EQ(parsed(Base64::encode(longer)), KdbxDate::epoch.seconds);
}

TEST(KdbxDateTest, fewerThanEightBytesAreNoTime) {
    EXPECT_FALSE(parsed("AAAAAAAAAA=="));
    EXPECT_FALSE(parsed("AAAA"));
    EXPECT_FALSE(parsed("AAAAAAAAAAA"));
    EXPECT_FALSE(parsed("2020"));
    EXPECT_FALSE(parsed("şimdi"));
}

TEST(KdbxDateTest, whateverCountAFileHoldsCanBeWrittenAgain) {
    for (const auto count : {INT64_MIN, INT64_MIN + 1, INT64_MAX, INT64_MAX - 1, INT64_MAX - 511, INT64_MAX - 512,
                             INT64_MAX - 1024, INT64_MAX - 62135596800, INT64_MIN + 62135596800}) {
        const auto date = KdbxDate::parse(binary(count)).value();

        const auto again = KdbxDate::parse(KdbxDate::encode(date, 4));
        EXPECT_EQ(again, date) << count;
        EXPECT_TRUE(KdbxDate::parse(KdbxDate::encode(date, 3))) << count;
    }
}

TEST(KdbxDateTest, timesThatNoCalendarShowsAreWrittenAsTheNearestThatOneDoes) {
    EXPECT_EQ(KdbxDate::iso8601({KdbxDate::epoch.seconds - 1}), "0001-01-01T00:00:00Z");
    EXPECT_EQ(KdbxDate::iso8601({-1e300}), "0001-01-01T00:00:00Z");
    EXPECT_EQ(KdbxDate::iso8601({std::nan("")}), "0001-01-01T00:00:00Z");
    EXPECT_EQ(KdbxDate::iso8601({1e300}), "32767-12-31T23:59:59Z");
    EXPECT_EQ(KdbxDate::iso8601({std::numeric_limits<double>::infinity()}), "32767-12-31T23:59:59Z");
    EXPECT_EQ(parsed("32767-12-31T23:59:59Z"), 971890963199);
}

TEST(KdbxDateDeathTest, aTimeBeyondTheBinaryFormIsAFaultOfTheProgram) {
    EXPECT_DEATH(static_cast<void>(KdbxDate::base64({1e300})), "");
    EXPECT_DEATH(static_cast<void>(KdbxDate::base64({std::nan("")})), "");
    EXPECT_DEATH(static_cast<void>(KdbxDate::base64({-std::numeric_limits<double>::infinity()})), "");
}

}  // namespace
