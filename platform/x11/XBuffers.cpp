// SPDX-License-Identifier: MIT
#include "platform/x11/XBuffers.h"

#include "platform/x11/XAnswer.h"

#include <cstddef>
#include <vector>

namespace {

// The buffers of libxcb.
constexpr std::size_t sendingBytes = 16 * 1024;
constexpr std::size_t receivingBytes = 4 * 1024;
constexpr std::size_t shortestRequest = 4;

/// From the beginning, where the buffer starts anew once all has been sent, to its end.
void overwriteSent(xcb_connection_t* connection) {
    xcb_flush(connection);
    for (std::size_t bytes = 0; bytes < sendingBytes; bytes += shortestRequest)
        xcb_no_operation(connection);
    xcb_flush(connection);
}

/// Short answers that come together fill the buffer, twice over; of one long answer only the beginning goes through it.
void overwriteReceived(xcb_connection_t* connection) {
    std::vector<xcb_get_input_focus_cookie_t> asked(2 * receivingBytes / sizeof(xcb_get_input_focus_reply_t));
    for (auto& cookie : asked)
        cookie = xcb_get_input_focus(connection);
    xcb_flush(connection);
    for (const auto& cookie : asked)
        const XAnswer<xcb_get_input_focus_reply_t> answer(xcb_get_input_focus_reply(connection, cookie, nullptr));
}

}  // namespace

void XBuffers::overwrite(xcb_connection_t* connection) {
    if (xcb_connection_has_error(connection))
        return;
    overwriteSent(connection);
    overwriteReceived(connection);
}
