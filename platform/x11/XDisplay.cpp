// SPDX-License-Identifier: MIT
#include "platform/x11/XDisplay.h"

#include <xcb/xcb.h>

bool XDisplay::canBeOpened() {
    auto* const connection = xcb_connect(nullptr, nullptr);
    const bool isOpen = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isOpen;
}
