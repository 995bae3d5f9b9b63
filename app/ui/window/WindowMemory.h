// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

class AppState;
class Preferences;
class QMainWindow;
class WindowSizer;

/// Keeps the size that the user gives the unlocked window for the next unlock and the next launch. A size that the
/// window was merely given is not stored.
class WindowMemory : public QObject {
    Q_OBJECT

public:
    WindowMemory(QMainWindow& window, WindowSizer& sizer, AppState& state, Preferences& preferences);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void store();

    QMainWindow& m_window;
    WindowSizer& m_sizer;
    AppState& m_state;
    Preferences& m_preferences;
    QTimer m_settling;  // a drag of the window's edge is one change
};
