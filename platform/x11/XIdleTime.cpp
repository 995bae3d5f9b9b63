// SPDX-License-Identifier: MIT
#include "platform/x11/XIdleTime.h"

#include "platform/x11/XAnswer.h"

#include <xcb/screensaver.h>

XIdleTime::XIdleTime(XConnection& connection) : m_connection(connection) {
    const auto* const extension = xcb_get_extension_data(connection.get(), &xcb_screensaver_id);
    m_isKnown = extension != nullptr && extension->present != 0;
}

std::optional<std::chrono::milliseconds> XIdleTime::get() const {
    if (!m_isKnown)
        return std::nullopt;
    const auto request = xcb_screensaver_query_info(m_connection.get(), m_connection.root());
    const XAnswer<xcb_screensaver_query_info_reply_t> reply(
        xcb_screensaver_query_info_reply(m_connection.get(), request, nullptr));
    return reply ? std::optional(std::chrono::milliseconds(reply->ms_since_user_input)) : std::nullopt;
}
