// SPDX-License-Identifier: MIT
#include "app/ui/window/WindowSizer.h"

#include "app/ui/unlock/UnlockView.h"

#include <QMainWindow>
#include <QMenuBar>
#include <QScreen>
#include <QTimer>
#include <QWindow>

namespace {

constexpr QSize smallestMain{720, 460};
constexpr QSize usualMain{1020, 680};
constexpr QSize unlimited{QWIDGETSIZE_MAX, QWIDGETSIZE_MAX};
constexpr int screenReserve = 80;
constexpr int heightWithoutScreen = 820;
constexpr QSize borderReserve(6, 6);  // managers draw a border anew after a while, and a scale rounds
constexpr std::chrono::milliseconds borderDelay{120};

}  // namespace

WindowSizer::WindowSizer(QMainWindow& window) : QObject(&window), m_window(window), m_mode(Lock{0}) {}

void WindowSizer::setMode(Mode mode) {
    m_mode = mode;
    if (!m_window.isVisible())
        return apply();  // so that the window manager places the size that it will have
    if (std::exchange(m_isQueued, true))
        return;
    QTimer::singleShot(0, this, [this] {
        m_isQueued = false;
        apply();
    });
}

void WindowSizer::setMainSize(QSize size, bool isMaximised) {
    m_savedMainSize = size;
    m_savedSpread = isMaximised ? Qt::WindowMaximized : Qt::WindowNoState;
}

void WindowSizer::apply() {
    if (const auto* lock = std::get_if<Lock>(&m_mode))
        applyLock(lock->cardHeight);
    else
        applyMain();
}

void WindowSizer::applyMain() {
    const bool isNew = !m_lastMode || !std::holds_alternative<Main>(*m_lastMode);
    m_lastMode = m_mode;
    if (!isNew)
        return;  // a free window is the user's
    m_givenMainSize = onScreen(m_savedMainSize.value_or(usualMain).expandedTo(smallestMain));
    setContentSize(m_givenMainSize, onScreen(smallestMain), unlimited);
    followScreen();
    if (m_savedSpread != Qt::WindowNoState)
        m_window.setWindowState(m_window.windowState() | std::exchange(m_savedSpread, Qt::WindowNoState));
}

/// A screen may change under the window, or the window go to another: its limits must not hold it larger than that.
void WindowSizer::followScreen() {
    auto* const handle = m_window.windowHandle();
    if (handle == nullptr)
        return;
    connect(handle, &QWindow::screenChanged, this, &WindowSizer::limitMain, Qt::UniqueConnection);
    if (auto* const screen = m_window.screen())
        connect(screen, &QScreen::availableGeometryChanged, this, &WindowSizer::limitMain, Qt::UniqueConnection);
}

void WindowSizer::limitMain() {
    if (!m_lastMode || !std::holds_alternative<Main>(*m_lastMode))
        return;
    followScreen();
    m_window.setMinimumSize(onScreen(smallestMain));
    const auto size = m_window.size();
    const auto within = onScreen(size);
    if (within == size || (m_window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) != 0)
        return;
    m_window.resize(within);
    if (m_givenMainSize == size)
        m_givenMainSize = within;
}

void WindowSizer::applyLock(int cardHeight) {
    const bool wasMain = m_lastMode && std::holds_alternative<Main>(*m_lastMode);
    if (cardHeight <= 0) {
        m_lastMode = m_mode;
        return;
    }
    const auto spread = m_window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen);
    if (wasMain && spread != Qt::WindowNoState) {
        // A window that turns into a card while it is maximised loses its frame under some window managers.
        m_savedSpread = spread;
        m_window.showNormal();
        setMode(m_mode);
        return;
    }
    m_lastMode = m_mode;
    if (wasMain)
        m_savedMainSize = m_window.size();
    const auto* menus = m_window.menuBar();
    const int chrome = std::max(menus->heightForWidth(UnlockView::cardWidth), menus->sizeHint().height());
    const auto area = availableArea();
    const int highest = area.isEmpty() ? heightWithoutScreen : area.height() - screenReserve;
    const QSize card = onScreen({UnlockView::cardWidth, std::min(highest, chrome + cardHeight)});
    setContentSize(card, card, card);
}

// The frame's middle is taken before any limit changes: limits resize at once, from the upper left corner.
void WindowSizer::setContentSize(QSize size, QSize smallest, QSize largest) {
    const bool hasChanged = m_window.size() != size;
    if (!hasChanged && m_window.minimumSize() == smallest && m_window.maximumSize() == largest)
        return;
    const auto centre = m_window.frameGeometry().center();
    m_window.setMinimumSize(0, 0);
    m_window.setMaximumSize(unlimited);
    m_window.resize(size);
    m_window.setMinimumSize(smallest);
    m_window.setMaximumSize(largest);
    if (!hasChanged || !isPlaced())
        return;
    centreFrame(centre);
    // Some window managers draw other borders around a window that cannot be resized, and report so a little later.
    QTimer::singleShot(borderDelay, this, [this, centre, size, borders = borderSize()] {
        if (m_window.size() != size || borderSize() == borders)
            return;
        limitMain();
        centreFrame(centre);
    });
}

void WindowSizer::centreFrame(QPoint centre) {
    QRect target(QPoint(), m_window.size() + borderSize());
    target.moveCenter(centre);
    const auto area = availableArea();
    if (!area.isEmpty()) {
        target.moveLeft(std::max(area.left(), std::min(target.left(), area.right() + 1 - target.width())));
        target.moveTop(std::max(area.top(), std::min(target.top(), area.bottom() + 1 - target.height())));
    }
    m_window.move(target.topLeft());
}

QSize WindowSizer::borderSize() const {
    return m_window.frameGeometry().size() - m_window.geometry().size();
}

/// Whether the window manager has given the window its first place.
bool WindowSizer::isPlaced() const {
    return m_window.isVisible() && m_window.windowHandle() && m_window.windowHandle()->isExposed();
}

QRect WindowSizer::availableArea() const {
    const auto* screen = m_window.screen();
    return screen ? screen->availableGeometry() : QRect();
}

/// What of a size the screen has room for, the window's borders included.
QSize WindowSizer::onScreen(QSize size) const {
    const auto area = availableArea();
    return area.isEmpty() ? size : size.boundedTo(area.size() - borderSize() - borderReserve);
}
