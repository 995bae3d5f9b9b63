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
               .clipboard = m_clipboard,
               .codec = {.load = KdbxFile::load, .save = KdbxFile::save},
               .workspace = &world.workspace,
               .autoTyping = &m_autoType}),
      m_hotKeySession(m_state),
      m_hotKeyHandler(m_autoType, m_hotKeySession),
      m_hotKey(world.desktop.hotKeys, world.clock) {
    m_state.restoreRecentDatabase();
    registerGlobalHotKey();
    for (const auto changed : {&Preferences::hotKeyCodeChanged, &Preferences::hotKeyModifiersChanged})
        QObject::connect(&m_preferences, changed, &m_state, [this] { registerGlobalHotKey(); });
    m_autoType.startTrackingFrontmostApplication();
}

// As the program ends: nothing is saved and nothing locked, and no loop runs any more.
Program::~Program() {
    m_clipboard.clearNow();
    m_hotKey.unregister();
    m_world.clock.forgetAll();
}

void Program::registerGlobalHotKey() {
    m_hotKey.registerHotKey({.keyCode = m_preferences.hotKeyCode(), .modifiers = m_preferences.hotKeyModifiers()},
                            [this] { m_hotKeyHandler.press(); });
}

}  // namespace Probe
