// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/Environment.h"
#include "app/ui/commands/Command.h"

#include <QImage>
#include <QMainWindow>

#include <filesystem>

class Commands;
class DerivationCover;
class MainView;
class QStackedWidget;
class ScreenFade;
class SheetHost;
struct MoveSubject;
class UnlockView;
class VaultOpener;
class WindowSizer;

/// The program's one window: the lock card, or the vault's three columns.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(const Environment& environment);

    /// Has it show again, also where it was minimised. Whether it comes before other windows is the desktop's to say.
    void bringUp();
    /// Opens a vault that was asked for from outside, once what the user is in the middle of has ended.
    void openVault(const std::filesystem::path& file);
    /// Does what the menu's item would do now, which is nothing where that is disabled.
    void perform(Command::ID command);

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
    void showCovered();
    void sizeWindow();

    AppState& m_state;
    Commands* m_commands;
    QStackedWidget* m_screens;
    UnlockView* m_unlockView;
    MainView* m_mainView;
    ScreenFade* m_fade;
    SheetHost* m_sheets;  // that are no route's
    DerivationCover* m_cover = nullptr;
    VaultOpener* m_opener = nullptr;
    WindowSizer* m_sizer;
    QImage m_picture;  // of the screen that is about to go
    bool m_hasAppeared = false;
};
