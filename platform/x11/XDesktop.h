// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/HotKeyState.h"
#include "platform/x11/XApplications.h"
#include "platform/x11/XConnection.h"
#include "platform/x11/XHotKeys.h"
#include "platform/x11/XIdleTime.h"
#include "platform/x11/XKeyboardEvents.h"
#include "platform/x11/XKeyboardLayout.h"

#include <memory>

/// What the X server and its window manager offer to type into other applications, and what they know of the user. When
/// it goes, nothing of it stays behind: no key that is down, no character on a spare key, no combination taken.
struct XDesktop {
    /// On the display of the environment; null where no connection to it opens. Needs Qt's loop.
    [[nodiscard]] static std::unique_ptr<XDesktop> connected();

    XDesktop(std::unique_ptr<XConnection> ownConnection, std::unique_ptr<XConnection> hotKeyConnection);

    std::unique_ptr<XConnection> connection;  // of all but the hot keys
    HotKeyState hotKeyState;
    XKeyboardLayout layout;
    XKeyboardEvents keyboard;
    XApplications applications;
    XIdleTime idleTime;
    XHotKeys hotKeys;
};
