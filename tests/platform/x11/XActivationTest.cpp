// SPDX-License-Identifier: MIT
#include "platform/x11/XActivation.h"

#include "platform/x11/XAnswer.h"
#include "platform/x11/XHandle.h"
#include "tests/desktop/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr std::uint32_t window = 0x4711;

/// What a launcher and a window manager see.
class XActivationTest : public ::testing::Test {
protected:
    void SetUp() override {
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(desktop.get(), desktop.root(), XCB_CW_EVENT_MASK, &events);
        roundTrip();
    }

    void roundTrip() {
        const XAnswer<xcb_get_input_focus_reply_t> answer(
            xcb_get_input_focus_reply(desktop.get(), xcb_get_input_focus(desktop.get()), nullptr));
        ASSERT_TRUE(answer);
    }

    /// The messages of one kind that have come.
    std::vector<xcb_client_message_event_t> messages(std::string_view kind) {
        roundTrip();
        while (const XAnswer<xcb_generic_event_t> event{xcb_poll_for_event(desktop.get())})
            if ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE)
                seen.push_back(*reinterpret_cast<const xcb_client_message_event_t*>(event.get()));
        std::vector<xcb_client_message_event_t> found;
        for (const auto& message : seen)
            if (message.type == desktop.atom(kind))
                found.push_back(message);
        return found;
    }

    const VirtualDisplay display;
    const bool isNamed = qputenv("DISPLAY", display.name().toUtf8());
    const XHandle desktop;
    std::vector<xcb_client_message_event_t> seen;
};

TEST_F(XActivationTest, theWindowManagerIsAskedInTheLaunchersTime) {
    XActivation::activate(window, "dosyalar/brenvik/1_TIME4711");

    const auto asked = messages("_NET_ACTIVE_WINDOW");
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked.front().window, window);
    EXPECT_EQ(asked.front().data.data32[1], 4711U);
}

TEST_F(XActivationTest, withoutALauncherTheTimeIsTheDisplays) {
    XActivation::activate(window, "");

    const auto asked = messages("_NET_ACTIVE_WINDOW");
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_NE(asked.front().data.data32[1], XCB_CURRENT_TIME);
    EXPECT_TRUE(messages("_NET_STARTUP_INFO_BEGIN").empty());
}

TEST_F(XActivationTest, theLauncherHearsThatItNeedNotWaitAnyLonger) {
    XActivation::activate(window, "dosyalar/bir \"ad\"\\1_TIME4711");

    auto pieces = messages("_NET_STARTUP_INFO_BEGIN");
    ASSERT_EQ(pieces.size(), 1U);
    for (const auto& piece : messages("_NET_STARTUP_INFO"))
        pieces.push_back(piece);
    std::string text;
    for (const auto& piece : pieces)
        text.append(reinterpret_cast<const char*>(piece.data.data8), sizeof(piece.data));
    EXPECT_STREQ(text.c_str(), R"(remove: ID=dosyalar/bir\ \"ad\"\\1_TIME4711)");
    EXPECT_LT(text.find('\0'), text.size());
}

TEST(XActivationTimeTest, isBehindItsMark) {
    EXPECT_EQ(XActivation::timeIn("a_TIME1/b_TIME4294967295"), 4294967295U);
    EXPECT_EQ(XActivation::timeIn("a_TIME4711-b"), 4711U);
    for (const auto* id : {"", "a", "a_TIME", "a_TIME0", "a_TIMEx", "a_TIME4294967296"})
        EXPECT_FALSE(XActivation::timeIn(id)) << id;
}

}  // namespace
