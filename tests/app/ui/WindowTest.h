// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/Environment.h"
#include "app/state/GlobalHotKey.h"
#include "core/autotype/AutoTypeService.h"
#include "tests/app/state/StateFakes.h"
#include "tests/support/FakeDesktop.h"

/// A session with all that a window's views are handed, on a desktop in memory.
class WindowTest : public StateTest {
protected:
    FakeDesktop desktop{clock};
    AutoTypeService autoType{{desktop.keyboard, desktop.layout, desktop.applications, clock}};
    GlobalHotKey hotKey{{.hotKeys = desktop.hotKeys,
                         .scheduler = clock,
                         .autoType = autoType,
                         .preferences = *preferences,
                         .state = *state}};
    Environment environment{
        .state = *state, .preferences = *preferences, .clipboard = clipboard, .autoType = autoType, .hotKey = hotKey};
};
