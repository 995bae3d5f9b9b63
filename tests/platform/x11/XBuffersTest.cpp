// SPDX-License-Identifier: MIT
#include "platform/x11/XBuffers.h"

#include "platform/x11/XAnswer.h"
#include "tests/desktop/VirtualDisplay.h"
#include "tests/support/MemoryScan.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class XBuffersTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!BRENVIK_MEMORY_IS_SCANNABLE)
            GTEST_SKIP() << "the sanitizer keeps what is freed";
        ASSERT_FALSE(xcb_connection_has_error(connection.get()));
    }

    xcb_window_t root() { return xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root; }

    /// As one who pastes does it.
    void send() {
        auto text = secret.clear();
        xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, root(), property, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
        secureWipe(text.data(), text.size());
        xcb_flush(connection.get());
    }

    void receive() {
        const XAnswer<xcb_get_property_reply_t> answer(xcb_get_property_reply(
            connection.get(), xcb_get_property(connection.get(), 0, root(), property, XCB_ATOM_STRING, 0, 1000),
            nullptr));
        ASSERT_TRUE(answer);
        ASSERT_EQ(xcb_get_property_value_length(answer.get()), static_cast<int>(secret.size()));
        secureWipe(xcb_get_property_value(answer.get()), secret.size());
    }

    static constexpr xcb_atom_t property = XCB_ATOM_CUT_BUFFER0;
    const VirtualDisplay display;
    const std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> connection{
        xcb_connect(qPrintable(display.name()), nullptr), xcb_disconnect};
    const MaskedSecret secret = MaskedSecret::text();
    MemoryScan memory;
};

TEST_F(XBuffersTest, whatWasSentIsOverwritten) {
    send();
    EXPECT_GT(memory.occurrences(secret), 0);
    XBuffers::overwrite(connection.get());
    EXPECT_EQ(memory.occurrences(secret), 0);
}

TEST_F(XBuffersTest, whatWasReceivedIsOverwritten) {
    send();
    // An answer that comes in two parts goes past the buffer.
    int tries = 0;
    do
        receive();
    while (memory.occurrences(secret) < 2 && ++tries < 100);
    EXPECT_GT(memory.occurrences(secret), 1);
    XBuffers::overwrite(connection.get());
    EXPECT_EQ(memory.occurrences(secret), 0);
}

TEST_F(XBuffersTest, aConnectionThatIsBrokenIsNoFault) {
    const std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> broken(xcb_connect(":987", nullptr),
                                                                                xcb_disconnect);
    ASSERT_TRUE(xcb_connection_has_error(broken.get()));
    XBuffers::overwrite(broken.get());
}

}  // namespace
