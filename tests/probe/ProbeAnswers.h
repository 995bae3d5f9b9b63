// SPDX-License-Identifier: MIT
#pragma once

#include "tests/probe/Probe.h"

#include <gtest/gtest.h>

#include <string>

/// The probe's answer to one line, by all operations that keep nothing between two lines.
inline Probe::Json answerToLine(const std::string& line) {
    static const auto operations = [] {
        Probe::Operations all;
        Probe::addVault(all);
        Probe::addPrimitives(all);
        Probe::addText(all);
        Probe::addBrowsing(all);
        Probe::addPasswords(all);
        return all;
    }();
    const auto text = Probe::answer(operations, line);
    EXPECT_EQ(text.find('\n'), std::string::npos);
    return Probe::Json::parse(text);
}

inline Probe::Json answerTo(const Probe::Json& request) {
    return answerToLine(request.dump());
}

/// The result of a request that succeeds.
inline Probe::Json resultOf(const Probe::Json& request) {
    const auto answer = answerTo(request);
    EXPECT_EQ(answer["ok"], true) << answer;
    return answer.value("result", Probe::Json());
}

inline void expectRefusal(const Probe::Json& request) {
    const auto answer = answerTo(request);
    EXPECT_EQ(answer["ok"], false) << request;
    EXPECT_EQ(answer.value("case", ""), "probe") << answer;
    EXPECT_FALSE(answer.value("message", "").empty()) << answer;
}
