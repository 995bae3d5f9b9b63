// SPDX-License-Identifier: MIT
#include "app/ui/window/WindowMemory.h"

#include "app/state/AppState.h"
#include "app/state/Preferences.h"
#include "app/ui/window/WindowSizer.h"

#include <QEvent>
#include <QMainWindow>

#include <chrono>

namespace {

constexpr std::chrono::milliseconds settlingTime{500};

}  // namespace

WindowMemory::WindowMemory(QMainWindow& window, WindowSizer& sizer, AppState& state, Preferences& preferences)
    : QObject(&window), m_window(window), m_sizer(sizer), m_state(state), m_preferences(preferences) {
    if (const auto& size = preferences.windowSize())
        sizer.setMainSize({size->width, size->height}, size->isMaximised);
    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_settling, &QTimer::timeout, this, &WindowMemory::store);
    connect(&state, &AppState::isLockedChanged, this, [this] {  // the card takes the window's place a little later
        if (m_settling.isActive())
            store();
    });
    window.installEventFilter(this);
}

bool WindowMemory::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    if (m_state.isLocked())
        return QObject::eventFilter(watched, event);
    if (type == QEvent::Resize || type == QEvent::WindowStateChange)
        m_settling.start();
    else if (type == QEvent::Close && m_settling.isActive())
        store();
    return QObject::eventFilter(watched, event);
}

void WindowMemory::store() {
    m_settling.stop();
    const bool isMaximised = m_window.isMaximized();
    const bool isSpread = isMaximised || m_window.isFullScreen();
    const QSize size = isSpread ? m_window.normalGeometry().size() : m_window.size();
    const auto& stored = m_preferences.windowSize();
    const bool wasMaximised = stored && stored->isMaximised;
    const bool isChosen = isMaximised != wasMaximised || (!isSpread && size != m_sizer.givenMainSize());
    if (isChosen && !size.isEmpty())
        m_preferences.setWindowSize(
            WindowSize{.width = size.width(), .height = size.height(), .isMaximised = isMaximised});
}
