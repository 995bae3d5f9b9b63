// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/Environment.h"

#include <QMainWindow>

class Commands;
class MainView;
class QStackedWidget;
class SheetHost;
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
    void showAbout();
    void hideAbout();
    void sizeWindow();

    AppState& m_state;
    Commands* m_commands;
    QWidget* m_content;  // the screens, and the sheets over them
    QStackedWidget* m_screens;
    UnlockView* m_unlockView;
    MainView* m_mainView;
    SheetHost* m_about;
    WindowSizer* m_sizer;
    bool m_hasAppeared = false;
};
