// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/Environment.h"

#include <QImage>
#include <QMainWindow>

class Commands;
class DerivationCover;
class MainView;
class QStackedWidget;
class ScreenFade;
class SheetHost;
struct MoveSubject;
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
    bool event(QEvent* event) override;

private:
    void arrange();
    void connectState();
    void keepPicture();
    void dropPicture();
    void showScreen();
    void takeFocus();
    void showTitle();
    void setGroupColumnShown(bool isShown);
    void showMnemonics(bool areShown);
    void showAbout();
    void showMove(const MoveSubject& subject);
    void present(QWidget* sheet);
    void hideSheet();
    void sizeWindow();

    AppState& m_state;
    Commands* m_commands;
    QStackedWidget* m_screens;
    UnlockView* m_unlockView;
    MainView* m_mainView;
    ScreenFade* m_fade;
    SheetHost* m_sheets;  // that are no route's
    DerivationCover* m_cover = nullptr;
    WindowSizer* m_sizer;
    QImage m_picture;  // of the screen that is about to go
    bool m_hasAppeared = false;
};
