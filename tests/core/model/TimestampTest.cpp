// SPDX-License-Identifier: MIT
#include "core/model/Timestamp.h"

#include <gtest/gtest.h>

#include <ctime>

namespace {

TEST(TimestampTest, nowIsTheSystemsClockInSecondsFrom1970) {
    const auto before = static_cast<double>(std::time(nullptr));
    const auto now = Timestamp::now();
    EXPECT_GE(now.seconds, before - 1);
    EXPECT_LE(now.seconds, before + 60);
}

TEST(TimestampTest, keepsAndComparesPartsOfASecond) {
    EXPECT_LT(Timestamp{1.25}, Timestamp{1.5});
    EXPECT_EQ(Timestamp{1.25}, Timestamp{1.25});
    EXPECT_NE(Timestamp{1'700'000'000.123}, Timestamp{1'700'000'000.124});
}

}  // namespace
