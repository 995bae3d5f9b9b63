// SPDX-License-Identifier: MIT
#pragma once

#include "app/Activation.h"
#include "app/state/AppState.h"
#include "app/state/AutoLock.h"
#include "app/state/GlobalHotKey.h"
#include "app/state/LogoutGuard.h"
#include "app/state/Preferences.h"
#include "app/state/VaultWatch.h"
#include "app/ui/window/MainWindow.h"
#include "core/autotype/AutoTypeService.h"
#include "core/clipboard/ClipboardService.h"
#include "core/platform/Desktop.h"
#include "platform/dbus/DesktopSession.h"
#include "platform/dbus/PortalFileChooser.h"
#include "platform/none/NoDesktop.h"
#include "platform/posix/PosixBookmarks.h"
#include "platform/posix/PosixFileStore.h"
#include "platform/posix/PosixRescueStore.h"
#include "platform/posix/WorkThread.h"
#include "platform/qt/QtBackgroundWork.h"
#include "platform/qt/QtFileWatcher.h"
#include "platform/qt/QtScheduler.h"
#include "platform/qt/QtUserInput.h"
#include "platform/qt/QtWorkspace.h"
#include "platform/qt/SettingsFile.h"
#include "platform/x11/XDesktop.h"

#include <memory>
#include <optional>

class QApplication;

/// The process's top: it makes the long-lived objects, each once, and orders launch and end.
class BrenvikApp {
public:
    explicit BrenvikApp(QApplication& application);
    ~BrenvikApp();
    BrenvikApp(const BrenvikApp&) = delete;
    BrenvikApp& operator=(const BrenvikApp&) = delete;

    /// Does what this start is for, and from then on what the desktop and other starts ask for.
    void serve(ApplicationService& service, const ApplicationWish& ownWish);
    /// The same without a wish of its own: the window shows once it is asked for.
    void serve(ApplicationService& service);

private:
    void launch();
    void end();
    void useDesktopsFilePanels();
    void leaveNothingUnused();
    void leaveNoTraces();

    PosixFileSystemCalls m_calls;
    PosixFileStore m_files;
    PosixRescueStore m_rescues;
    WorkThread m_rescueWork;
    PosixBookmarks m_bookmarks;
    SettingsFile m_settings;
    QtScheduler m_scheduler;
    QtBackgroundWork m_background;
    std::unique_ptr<Clipboard> m_desktopClipboard;
    ClipboardService m_clipboard;
    Preferences m_preferences;
    QtWorkspace m_workspace;
    std::unique_ptr<XDesktop> m_xDesktop;  // null where there is none
    NoDesktop m_noDesktop;
    Desktop m_desktop;  // the better one of the two
    AutoTypeService m_autoType;
    AppState m_state;
    QtFileWatcher m_fileWatcher;
    VaultWatch m_vaultWatch;
    GlobalHotKey m_hotKey;
    QtUserInput m_userInput;
    DesktopSession m_session;
    AutoLock m_autoLock;
    LogoutGuard m_logoutGuard;
    std::optional<MainWindow> m_window;
    std::optional<Activation> m_activation;
    std::optional<PortalFileChooser> m_filePanels;
    Observers::Subscription m_clipboardEnd;
    Observers::Subscription m_secretsEnd;
};
