// SPDX-License-Identifier: MIT
#include "app/BrenvikApp.h"

#include "app/ui/components/ApplicationStyle.h"
#include "app/ui/components/EnterKeyName.h"
#include "app/ui/components/FilePanels.h"
#include "app/ui/components/ShownSecrets.h"
#include "app/ui/theme/FontRegistrar.h"
#include "app/ui/theme/Motion.h"
#include "core/container/KdbxFile.h"
#include "core/container/KdbxTransformedKey.h"
#include "core/primitives/Sha2.h"
#include "platform/posix/UnusedMemory.h"
#include "platform/qt/DesktopClipboard.h"
#include "platform/qt/DesktopTraces.h"
#include "platform/qt/MotionSetting.h"

#include <QApplication>

#include <chrono>
#include <cstdlib>
#include <thread>

namespace {

using namespace std::chrono_literals;

/// Null where the window is not on an X display itself: keys would go to other windows than those that the user sees.
std::unique_ptr<XDesktop> xDesktop() {
    return QGuiApplication::platformName() == QLatin1String("xcb") ? XDesktop::connected() : nullptr;
}

template <class Services>
Desktop servicesOf(Services& services) {
    return {.keyboard = services.keyboard,
            .layout = services.layout,
            .applications = services.applications,
            .hotKeys = services.hotKeys};
}

/// Whose unsaved work is kept when the display goes away: Qt then ends the process by exit(3), from within its loop.
AppState* keptAtExit = nullptr;

/// The display's death ends the process where it is, by `exit`. The main thread has lost what it keeps a thread by
/// then, the contexts of hashes among it, so that another one writes the copy; and what is registered last runs first,
/// so that the library of the hashes must have registered its own end before.
void keepAtExit(AppState& state) {
    (void)Sha2::sha256(ByteView());
    keptAtExit = &state;
    (void)std::atexit([] {
        if (keptAtExit)
            std::jthread([] { keptAtExit->keepUnsaved(); });
    });
}

/// The user may change the setting while the program runs: it asks again whenever its window is turned to.
void followMotionSetting(QApplication& application) {
    const auto ask = [] { Motion::setReduced(MotionSetting::isReduced()); };
    ask();
    QObject::connect(&application, &QApplication::applicationStateChanged, &application, [ask](auto state) {
        if (state == Qt::ApplicationActive)
            ask();
    });
}

}  // namespace

BrenvikApp::BrenvikApp(QApplication& application)
    : m_files(m_calls),
      m_rescues(m_files, PosixRescueStore::usualFolder()),
      m_settings(m_files, SettingsFile::usualPath()),
      m_desktopClipboard(desktopClipboard()),
      m_clipboard(*m_desktopClipboard, m_scheduler),
      m_preferences(m_settings, m_clipboard),
      m_xDesktop(xDesktop()),
      m_desktop(m_xDesktop ? servicesOf(*m_xDesktop) : servicesOf(m_noDesktop)),
      m_autoType({.keyboard = m_desktop.keyboard,
                  .layout = m_desktop.layout,
                  .applications = m_desktop.applications,
                  .scheduler = m_scheduler}),
      m_state({.preferences = m_preferences,
               .files = m_files,
               .bookmarks = m_bookmarks,
               .scheduler = m_scheduler,
               .background = m_background,
               .clipboard = m_clipboard,
               .codec = {.load = KdbxFile::load, .save = KdbxFile::save, .saveUnder = KdbxFile::saveUnder},
               .workspace = m_workspace,
               .autoTyping = m_autoType,
               .rescues = &m_rescues,
               .rescueWork = &m_rescueWork}),
      m_vaultWatch({.watcher = m_fileWatcher, .scheduler = m_scheduler, .state = m_state}),
      m_hotKey({.hotKeys = m_desktop.hotKeys,
                .scheduler = m_scheduler,
                .autoType = m_autoType,
                .preferences = m_preferences,
                .state = m_state}),
      m_userInput(m_xDesktop ? &m_xDesktop->idleTime : nullptr),
      m_autoLock({.events = m_session,
                  .input = m_userInput,
                  .scheduler = m_scheduler,
                  .preferences = m_preferences,
                  .state = m_state}),
      m_logoutGuard(m_session, m_state) {
    FontRegistrar::registerBundledFonts(FontRegistrar::resourceFolder());
    ApplicationStyle::apply(application);
    EnterKeyName::install(application);
    followMotionSetting(application);
    m_window.emplace(Environment{.state = m_state,
                                 .preferences = m_preferences,
                                 .clipboard = m_clipboard,
                                 .autoType = m_autoType,
                                 .hotKey = m_hotKey});
    QObject::connect(&*m_window, &MainWindow::appeared, &*m_window, [this] { launch(); });
    QObject::connect(&application, &QApplication::aboutToQuit, &*m_window, [this] { end(); });
    // A change that another machine has made on a network disk has no notice: the user comes back from there.
    QObject::connect(&application, &QApplication::applicationStateChanged, &m_vaultWatch, [this](auto state) {
        if (state == Qt::ApplicationActive)
            m_vaultWatch.lookSoon();
    });
    // At the session's end the window may get no word of its own end any more: what is unsaved is kept already now.
    QObject::connect(
        &application, &QGuiApplication::commitDataRequest, &*m_window, [this] { m_state.keepUnsaved(); },
        Qt::DirectConnection);
    keepAtExit(m_state);
    for (const auto signal : {&AppState::databaseChanged, &AppState::lastErrorChanged})
        QObject::connect(&m_state, signal, &*m_window, [this] { leaveNothingUnused(); });
    m_clipboardEnd = m_clipboard.observe([this] {
        if (!m_clipboard.hasPendingSecret())
            leaveNoTraces();
    });
    m_secretsEnd = ShownSecrets::observeEnd([this] { leaveNoTraces(); });
}

BrenvikApp::~BrenvikApp() {
    FilePanels::setDesktop(nullptr);
    keptAtExit = nullptr;
}

void BrenvikApp::serve(ApplicationService& service, const ApplicationWish& ownWish) {
    serve(service);
    m_activation->begin(ownWish);
}

void BrenvikApp::serve(ApplicationService& service) {
    m_activation.emplace(Activation::Services{
        .service = service, .state = m_state, .hotKey = m_hotKey, .scheduler = m_scheduler, .window = *m_window});
}

// Once the vault is gone, or a try to open it has failed: when the views have let go of what they showed, and again
// when those have gone that fade out.
void BrenvikApp::leaveNothingUnused() {
    if (m_state.database())
        return;
    for (const auto wait : {0s, 1s})
        m_scheduler.after(wait, [] {
            DesktopTraces::dropSelection();
            DesktopTraces::wipe();
            UnusedMemory::giveBack();
        });
}

/// Once a secret is no longer shown or on the clipboard: what was pasted and what was read out went through more memory
/// than ours, also what was asked for just before.
void BrenvikApp::leaveNoTraces() {
    for (const auto wait : {0s, 1s})
        m_scheduler.after(wait, [] {
            DesktopTraces::wipe();
            UnusedMemory::wipeStack();
        });
}

/// Once the window shows: to ask for the portal may start it. Who has chosen a theme of the toolkit's has chosen its
/// panels' kind as well.
void BrenvikApp::useDesktopsFilePanels() {
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORMTHEME"))
        return;
    m_filePanels.emplace();
    FilePanels::setDesktop(&*m_filePanels);
}

void BrenvikApp::launch() {
    m_scheduler.after(0s, [this] { useDesktopsFilePanels(); });
    m_state.awaitRecentDatabase();
    m_hotKey.registerGlobalHotKey();
    m_autoType.startTrackingFrontmostApplication();
}

// Nothing is saved and nothing locked: the vault's file stays as it is, and what is not in it is kept beside it.
void BrenvikApp::end() {
    m_clipboard.clearNow();
    m_hotKey.unregister();
    m_autoType.stop();
    m_state.keepUnsaved();
}
