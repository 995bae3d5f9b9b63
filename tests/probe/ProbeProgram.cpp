// SPDX-License-Identifier: MIT
#include "tests/probe/ProbeProgram.h"

#include "core/container/KdbxFile.h"

namespace Probe {

Program::Program(World& world)
    : m_world(world),
      m_clipboard(world.pasteboard, world.clock),
      m_preferences(world.settings, m_clipboard),
      m_autoType({.keyboard = world.desktop.keyboard,
                  .layout = world.desktop.layout,
                  .applications = world.desktop.applications,
                  .scheduler = world.clock}),
      m_state({.preferences = m_preferences,
               .files = world.files,
               .bookmarks = world.bookmarks,
               .scheduler = world.clock,
               .background = world.background,
               .clipboard = m_clipboard,
               .codec = {.load = KdbxFile::load, .save = KdbxFile::save},
               .workspace = world.workspace,
               .autoTyping = m_autoType}),
      m_hotKey({.hotKeys = world.desktop.hotKeys,
                .scheduler = world.clock,
                .autoType = m_autoType,
                .preferences = m_preferences,
                .state = m_state}) {
    m_state.restoreRecentDatabase();
    m_hotKey.registerGlobalHotKey();
    m_autoType.startTrackingFrontmostApplication();
}

// As the program ends: nothing is saved and nothing locked, and no loop runs any more.
Program::~Program() {
    m_clipboard.clearNow();
    m_hotKey.unregister();
    m_world.clock.forgetAll();
}

}  // namespace Probe
