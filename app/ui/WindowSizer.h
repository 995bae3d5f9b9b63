// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPoint>
#include <QSize>

#include <optional>
#include <variant>

class QMainWindow;

/// Turns the window into a small card that holds its size while locked, and back into a free window when unlocked, its
/// middle staying where it was.
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

private:
    void apply();
    void applyMain();
    void applyLock(int cardHeight);
    void setContentSize(QSize size, QSize smallest, QSize largest);
    void centreFrame(QPoint centre);
    [[nodiscard]] QSize borderSize() const;
    [[nodiscard]] bool isPlaced() const;
    [[nodiscard]] QRect availableArea() const;

    QMainWindow& m_window;
    Mode m_mode;
    std::optional<Mode> m_lastMode;                      // none before the first
    std::optional<QSize> m_savedMainSize;                // to go back to on leaving the card
    Qt::WindowStates m_savedSpread = Qt::WindowNoState;  // maximised or over the whole screen, to go back to as well
    bool m_isQueued = false;
};
