// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/Applications.h"
#include "core/platform/HotKeys.h"
#include "core/platform/KeyboardEvents.h"
#include "core/platform/KeyboardLayout.h"

/// What typing into other applications needs of the desktop that there is.
struct Desktop {
    KeyboardEvents& keyboard;
    KeyboardLayout& layout;
    Applications& applications;
    HotKeys& hotKeys;
};
