// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/Environment.h"

#include <QMainWindow>

class Commands;
class MainView;
class QStackedWidget;
class UnlockView;
class WindowSizer;

/// The program's one window: the lock card, or the vault's three columns.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(const Environment& environment);

signals:
    /// The window shows for the first time.
    void appeared();
    /// The user has closed it.
    void closed();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void arrange();
    void connectState();
    void showScreen();
    void sizeWindow();

    AppState& m_state;
    Commands* m_commands;
    QStackedWidget* m_screens;
    UnlockView* m_unlockView;
    MainView* m_mainView;
    WindowSizer* m_sizer;
    bool m_hasAppeared = false;
};
