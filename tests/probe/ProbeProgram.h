// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/AppState.h"
#include "app/state/GlobalHotKey.h"
#include "app/state/Preferences.h"
#include "core/autotype/AutoTypeService.h"
#include "core/clipboard/ClipboardService.h"
#include "core/platform/Workspace.h"
#include "platform/posix/PosixBookmarks.h"
#include "platform/posix/PosixFileStore.h"
#include "tests/support/FakeBackgroundWork.h"
#include "tests/support/FakeClipboard.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeScheduler.h"
#include "tests/support/FakeSettings.h"

#include <memory>

namespace Probe {

/// A desktop that opens nothing.
class DeafWorkspace final : public Workspace {
public:
    void openURL(std::string_view) override {}
};

/// What the program meets and what outlives it: the machine's own files, and a desktop in memory on which time stands
/// still until it is moved.
struct World {
    PosixFileSystemCalls calls;
    PosixFileStore files{calls};
    PosixBookmarks bookmarks;
    FakeSettings settings;
    FakeScheduler clock;
    FakeBackgroundWork background;
    FakeClipboard pasteboard;
    FakeDesktop desktop{clock};
    DeafWorkspace workspace;
};

/// The program without its window, from its launch to its end.
class Program {
public:
    explicit Program(World& world);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program();

    [[nodiscard]] AppState& state() noexcept { return m_state; }
    [[nodiscard]] Preferences& preferences() noexcept { return m_preferences; }
    [[nodiscard]] ClipboardService& clipboard() noexcept { return m_clipboard; }

private:
    World& m_world;
    ClipboardService m_clipboard;
    Preferences m_preferences;
    AutoTypeService m_autoType;
    AppState m_state;
    GlobalHotKey m_hotKey;
};

}  // namespace Probe
