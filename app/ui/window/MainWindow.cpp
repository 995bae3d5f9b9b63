// SPDX-License-Identifier: MIT
#include "app/ui/window/MainWindow.h"

#include "app/state/AppState.h"
#include "app/ui/commands/Commands.h"
#include "app/ui/components/Bidi.h"
#include "app/ui/components/IconTile.h"
#include "app/ui/components/LongText.h"
#include "app/ui/components/RowText.h"
#include "app/ui/components/Sheet.h"
#include "app/ui/components/Texts.h"
#include "app/ui/groups/MoveView.h"
#include "app/ui/rows/RowListView.h"
#include "app/ui/settings/SettingsView.h"
#include "app/ui/theme/Style.h"
#include "app/ui/unlock/UnlockView.h"
#include "app/ui/window/AboutView.h"
#include "app/ui/window/ClipboardNotice.h"
#include "app/ui/window/DerivationCover.h"
#include "app/ui/window/MainView.h"
#include "app/ui/window/RouteSheet.h"
#include "app/ui/window/ScreenFade.h"
#include "app/ui/window/SpokenChanges.h"
#include "app/ui/window/VaultOpener.h"
#include "app/ui/window/WindowMemory.h"
#include "app/ui/window/WindowSizer.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QStackedWidget>

MainWindow::MainWindow(const Environment& environment)
    : m_state(environment.state),
      m_commands(new Commands(environment, *this)),
      m_screens(new QStackedWidget),
      m_unlockView(new UnlockView(environment.state)),
      m_mainView(new MainView(environment, *m_commands)),
      m_fade(new ScreenFade(m_screens)),
      m_sheets(new SheetHost(m_screens, this)),
      m_sizer(new WindowSizer(*this)) {
    arrange();
    m_commands->setGroupList(m_mainView->groupList());
    new SpokenChanges(environment, *this);
    auto* const routes = new RouteSheet(environment, m_screens, this);
    connect(routes, &RouteSheet::focusLost, this, &MainWindow::takeFocus);
    connect(m_sheets, &SheetHost::focusLost, this, &MainWindow::takeFocus);
    m_opener = new VaultOpener(m_state, *m_commands, *this);
    m_cover = new DerivationCover(m_state, *this);
    connect(m_commands, &Commands::settingsWanted, this,
            [this, environment] { SettingsView::open(environment, *this, m_commands->everywhere()); });
    connectState();
    showScreen();
    new ClipboardNotice(m_state, environment.clipboard, this);
    new WindowMemory(*this, *m_sizer, m_state, environment.preferences);
}

void MainWindow::arrange() {
    setWindowIcon(BrandMark::windowIcon());
    menuBar()->setNativeMenuBar(false);  // the window has its own, on every desktop
    m_commands->fill(*menuBar());
    for (const auto* const title : menuBar()->actions())  // an open menu has the key that Alt is let go with
        connect(title->menu(), &QMenu::aboutToHide, this, [this] { showMnemonics(false); });
    m_screens->addWidget(m_unlockView);
    m_screens->addWidget(m_mainView);
    setCentralWidget(m_screens);
}

void MainWindow::connectState() {
    connect(&m_state, &AppState::isLockedChanged, this, &MainWindow::showScreen);
    connect(&m_state, &AppState::routeChanged, this, &MainWindow::hideSheet);
    for (const auto signal : {&AppState::databaseChanged, &AppState::databaseURLChanged, &AppState::isDirtyChanged})
        connect(&m_state, signal, this, &MainWindow::showTitle);
    connect(m_commands, &Commands::groupColumnToggled, this,
            [this] { setGroupColumnShown(!m_mainView->areGroupsWanted()); });
    connect(m_commands, &Commands::columnWidthsWanted, m_mainView, &MainView::goToNextDivider);
    connect(m_commands, &Commands::sessionWillEnd, this, &MainWindow::keepPicture);
    connect(m_commands, &Commands::aboutWanted, this, &MainWindow::showAbout);
    connect(m_commands, &Commands::moveWanted, this, &MainWindow::showMove);
    connect(m_mainView, &MainView::moveWanted, this, &MainWindow::showMove);
    connect(m_unlockView, &UnlockView::cardHeightChanged, this, &MainWindow::sizeWindow);
    connect(&m_state, &AppState::derivationChanged, this, &MainWindow::dropPicture);
    connect(m_opener, &VaultOpener::askingChanged, this, &MainWindow::showCovered);
    connect(m_cover, &DerivationCover::shownChanged, m_unlockView, &UnlockView::setDeriving);
    connect(m_cover, &DerivationCover::shownChanged, m_commands, &Commands::setWaiting);
}

void MainWindow::bringUp() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
}

void MainWindow::openVault(const std::filesystem::path& file) {
    m_opener->open(file);
}

void MainWindow::perform(Command::ID command) {
    m_commands->action(command)->trigger();
}

/// Of the columns while they still have something to show: once the state announces the lock, the vault is gone.
void MainWindow::keepPicture() {
    if (!m_state.isLocked())
        m_picture = ScreenFade::pictureOf(*m_screens);
}

/// Of a lock that was given up: what it shows is still open, and may look otherwise when it goes.
void MainWindow::dropPicture() {
    if (!m_state.derivation() && !m_state.isLocked())
        m_picture = {};
}

void MainWindow::showScreen() {
    hideSheet();
    showTitle();
    auto picture = m_state.isLocked() ? std::exchange(m_picture, {}) : ScreenFade::pictureOf(*m_screens);
    if (m_state.isLocked()) {
        m_screens->setCurrentWidget(m_unlockView);
        m_unlockView->startOver();
    } else {
        setGroupColumnShown(true);
        m_screens->setCurrentWidget(m_mainView);
        m_mainView->takeFocus();
    }
    if (isVisible())
        m_fade->start(std::move(picture));
    sizeWindow();
}

/// Where a closed sheet has left no control with it.
void MainWindow::takeFocus() {
    if (!m_state.isLocked())
        m_mainView->takeFocus();
}

/// The vault's name, by which the window is found among others, and a star for what is not saved. While locked
/// nothing says which vault it is.
void MainWindow::showTitle() {
    const bool isLocked = m_state.isLocked();
    auto name = Bidi::isolated(RowText::line(LongText::beginning(m_state.databaseName())));
    name.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));  // what a name holds is no place for the star
    setWindowTitle(isLocked ? QStringLiteral("Brenvik") : name + QStringLiteral("[*] — Brenvik"));
    setWindowModified(!isLocked && m_state.isDirty());
}

void MainWindow::setGroupColumnShown(bool isShown) {
    m_mainView->setGroupsWanted(isShown);
    m_commands->showGroupColumn(isShown);
}

void MainWindow::showAbout() {
    if (m_sheets->sheet())
        return;
    auto* const about = new AboutView;
    connect(about, &AboutView::dismissed, this, &MainWindow::hideSheet);
    present(about);
}

void MainWindow::showMove(const MoveSubject& subject) {
    if (m_sheets->sheet() || m_state.isLocked())
        return;
    auto* const view = new MoveView(m_state, subject);
    connect(view, &MoveView::dismissed, this, &MainWindow::hideSheet);
    present(view);
}

void MainWindow::present(QWidget* sheet) {
    m_sheets->present(sheet);
    showCovered();
}

void MainWindow::hideSheet() {
    m_sheets->dismiss();
    showCovered();
}

void MainWindow::showCovered() {
    m_commands->setCovered(m_sheets->sheet() != nullptr || m_opener->isAsking());
}

void MainWindow::sizeWindow() {
    if (m_state.isLocked())
        m_sizer->setMode(WindowSizer::Lock{m_unlockView->cardHeight()});
    else
        m_sizer->setMode(WindowSizer::Main{});
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (!std::exchange(m_hasAppeared, true))
        emit appeared();
}

bool MainWindow::event(QEvent* event) {
    const auto type = event->type();
    if (type == QEvent::KeyPress || type == QEvent::KeyRelease) {
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Alt)
            showMnemonics(type == QEvent::KeyPress);
    } else if (type == QEvent::WindowDeactivate) {
        showMnemonics(false);
    }
    return QMainWindow::event(event);
}

void MainWindow::showMnemonics(bool areShown) {
    Style::setMnemonicsShown(areShown);
    menuBar()->update();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (m_cover->putsOffClose())
        return event->ignore();
    QMainWindow::closeEvent(event);
    emit closed();
}
