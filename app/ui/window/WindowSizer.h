// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPoint>
#include <QSize>

#include <optional>
#include <variant>

class QMainWindow;

/// Turns the window into a small card that holds its size while locked, and back into a free window when unlocked, its
/// middle staying where it was. Neither is ever larger than the screen, however few points that has at its resolution.
class WindowSizer : public QObject {
    Q_OBJECT

public:
    struct Lock {
        int cardHeight;
    };
    struct Main {};
    using Mode = std::variant<Lock, Main>;

    explicit WindowSizer(QMainWindow& window);

    /// Takes effect after the present event, when the card has its height.
    void setMode(Mode mode);

    /// The size of the first free window, and whether that is spread over the screen.
    void setMainSize(QSize size, bool isMaximised);
    /// The size that the free window was given last; what differs from it, its user has chosen.
    [[nodiscard]] QSize givenMainSize() const noexcept { return m_givenMainSize; }

private:
    void apply();
    void applyMain();
    void applyLock(int cardHeight);
    void followScreen();
    void limitMain();
    void setContentSize(QSize size, QSize smallest, QSize largest);
    void centreFrame(QPoint centre);
    [[nodiscard]] QSize borderSize() const;
    [[nodiscard]] bool isPlaced() const;
    [[nodiscard]] QRect availableArea() const;
    [[nodiscard]] QSize onScreen(QSize size) const;

    QMainWindow& m_window;
    Mode m_mode;
    std::optional<Mode> m_lastMode;        // none before the first
    std::optional<QSize> m_savedMainSize;  // to go back to on leaving the card
    QSize m_givenMainSize;
    Qt::WindowStates m_savedSpread = Qt::WindowNoState;  // maximised or over the whole screen, to go back to as well
    bool m_isQueued = false;
};
