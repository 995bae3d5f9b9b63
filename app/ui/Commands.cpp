// SPDX-License-Identifier: MIT
#include "app/ui/Commands.h"

#include "app/state/AppState.h"
#include "app/ui/FilePanels.h"
#include "app/ui/MoveCommands.h"
#include "app/ui/TextCommands.h"
#include "app/ui/Texts.h"
#include "core/clipboard/ClipboardService.h"

#include <QAction>
#include <QApplication>
#include <QMenuBar>

#include <algorithm>
#include <set>
#include <variant>
#include <vector>

namespace {

/// The wait cursor for as long as a vault is encrypted.
class Waiting {
public:
    Waiting() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Waiting() { QApplication::restoreOverrideCursor(); }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
};

}  // namespace

Commands::Commands(const Environment& environment, QWidget& window)
    : QObject(&window),
      m_environment(environment),
      m_state(environment.state),
      m_window(window),
      m_text(new TextCommands(window)),
      m_moves(new MoveCommands(environment.state, window)) {
    makeFileCommands();
    makeEditCommands();
    makeEntryCommands();
    makeOtherCommands();
    connectState();
    showEnabled();
}

void Commands::makeFileCommands() {
    m_create = make(tr("Yeni Veritabanı…"), {Qt::CTRL | Qt::Key_N}, &Commands::always, [this] { createDatabase(); });
    m_open = make(tr("Veritabanı Aç…"), {Qt::CTRL | Qt::Key_O}, &Commands::always, [this] { openDatabase(); });
    m_save = make(tr("Kaydet"), {Qt::CTRL | Qt::Key_S}, &Commands::canSave, [this] { save(); });
    m_saveAs =
        make(tr("Farklı Kaydet…"), {Qt::CTRL | Qt::SHIFT | Qt::Key_S}, &Commands::hasDatabase, [this] { saveAs(); });
    m_lock = make(tr("Kasayı Kilitle"), {Qt::CTRL | Qt::Key_L}, &Commands::isUnlocked, [this] { lock(); });
    m_close = make(tr("Veritabanını Kapat"), {Qt::CTRL | Qt::SHIFT | Qt::Key_W}, &Commands::hasDatabase,
                   [this] { closeDatabase(); });
    m_quit = make(tr("Çık"), {Qt::CTRL | Qt::Key_Q}, &Commands::always, [this] { m_window.close(); });
    m_quit->setMenuRole(QAction::QuitRole);
}

void Commands::makeEditCommands() {
    m_undo = make(tr("Geri Al"), {Qt::CTRL | Qt::Key_Z}, &Commands::canUndo, [this] { m_state.undo(); });
    m_redo = make(tr("Yinele"), {Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y}, &Commands::canRedo,
                  [this] { m_state.redo(); });
    for (auto* const action : {m_undo, m_redo})
        action->setAutoRepeat(true);  // a key that is held down goes on step by step
    m_settings = make(tr("Ayarlar…"), {Qt::CTRL | Qt::Key_Comma}, &Commands::always, [this] { emit settingsWanted(); });
    m_settings->setMenuRole(QAction::PreferencesRole);
}

void Commands::makeEntryCommands() {
    const auto focused = &Commands::hasFocusedEntry;
    m_copyUsername =
        make(tr("Kullanıcı Adını Kopyala"), {Qt::CTRL | Qt::Key_B}, focused, [this] { m_state.copyUsername(); });
    m_copyPassword = make(tr("Parolayı Kopyala"), {Qt::CTRL | Qt::Key_C}, focused, [this] { m_state.copyPassword(); });
    m_copyURL = make(tr("Adresi Kopyala"), {Qt::CTRL | Qt::SHIFT | Qt::Key_U}, focused, [this] { m_state.copyURL(); });
    m_autoType =
        make(tr("Otomatik Yaz"), {Qt::CTRL | Qt::SHIFT | Qt::Key_V}, focused, [this] { m_state.performAutoType(); });
    m_openURL =
        make(tr("Adresi Tarayıcıda Aç"), {Qt::CTRL | Qt::SHIFT | Qt::Key_Enter, Qt::CTRL | Qt::SHIFT | Qt::Key_Return},
             focused, [this] { m_state.openURL(); });
    m_newEntry = make(tr("Yeni Kayıt…"), {Qt::CTRL | Qt::Key_I}, &Commands::isInReach, [this] { showNewEntry(); });
    m_newGroup =
        make(tr("Yeni Grup…"), {Qt::CTRL | Qt::SHIFT | Qt::Key_G}, &Commands::isInReach, [this] { showNewGroup(); });
    m_edit = make(tr("Düzenle…"), {Qt::CTRL | Qt::Key_E}, focused, [this] { showEditor(); });
    m_delete = make(tr("Sil"), {Qt::CTRL | Qt::Key_Delete}, &Commands::hasSelection,
                    [this] { m_state.deleteEntries(m_state.selectedEntryIDs()); });
}

void Commands::makeOtherCommands() {
    m_generate = make(tr("Parola Üret…"), {Qt::CTRL | Qt::Key_G}, &Commands::losesNoForm,
                      [this] { m_state.setRoute(Route::generator(std::nullopt)); });
    m_clearClipboard = make(tr("Panoyu Şimdi Temizle"), {Qt::CTRL | Qt::SHIFT | Qt::Key_K}, &Commands::always,
                            [this] { m_environment.clipboard.clearNow(); });
    m_search = make(tr("Ara"), {Qt::CTRL | Qt::Key_F}, &Commands::isInReach, [this] { m_state.focusSearch(); });
    m_groupColumn = make({}, {Qt::Key_F9}, &Commands::isInReach, [this] { emit groupColumnToggled(); });
    showGroupColumn(true);
    m_columnWidths =
        make(tr("Sütun Genişliğini Ayarla"), {Qt::Key_F8}, &Commands::isInReach, [this] { emit columnWidthsWanted(); });
    m_about = make(tr("Brenvik Hakkında"), {}, &Commands::showsNoRoute, [this] { emit aboutWanted(); });
    m_about->setMenuRole(QAction::AboutRole);
}

QAction* Commands::make(const QString& text, const QList<QKeySequence>& keys, Rule rule, std::function<void()> act) {
    auto* const action = new QAction(text, this);
    action->setShortcuts(keys);
    action->setAutoRepeat(false);  // a key that is held down is one wish
    connect(action, &QAction::triggered, this, [this, action, act = std::move(act)] {
        if (!isHeldBack(action))
            act();
    });
    m_rules.emplace_back(action, rule);
    return action;
}

void Commands::fill(QMenuBar& bar) {
    const auto menu = [&bar](const QString& title, std::initializer_list<QList<QAction*>> groups) {
        auto* const menu = bar.addMenu(title);
        for (const auto& group : groups) {
            if (!menu->isEmpty())
                menu->addSeparator();
            menu->addActions(group);
        }
        return menu;
    };
    menu(tr("&Dosya"), {{m_create, m_open}, {m_save, m_saveAs}, {m_lock, m_close}, {m_quit}});
    auto* const edit =
        menu(tr("Dü&zen"), {{m_undo, m_redo}, m_text->editing(), {m_text->selectingAll()}, {m_settings}});
    connect(edit, &QMenu::aboutToShow, m_text, &TextCommands::showEnabled);
    menu(tr("&Kayıt"), {{m_copyUsername, m_copyPassword, m_copyURL},
                        {m_autoType, m_openURL},
                        {m_newEntry, m_newGroup, m_edit, m_delete},
                        m_moves->all()});
    menu(tr("&Araçlar"), {{m_generate, m_clearClipboard}});
    menu(tr("&Görünüm"), {{m_search}, {m_groupColumn, m_columnWidths}});
    menu(tr("&Yardım"), {{m_about}});
}

void Commands::fillMore(QMenu& menu) {
    // The same commands in the words of a menu that stands beside the entry.
    const auto add = [&menu](const QString& text, QAction* command) {
        auto* const action = menu.addAction(text, command, &QAction::trigger);
        const auto follow = [action, command] { action->setEnabled(command->isEnabled()); };
        connect(command, &QAction::changed, action, follow);
        follow();
    };
    menu.addSection(tr("Seçili kayıt"));
    add(tr("Kullanıcı adını kopyala"), m_copyUsername);
    add(tr("Parolayı kopyala"), m_copyPassword);
    add(tr("Otomatik yaz"), m_autoType);
    menu.addSeparator();
    add(tr("Yeni grup…"), m_newGroup);
    add(tr("Parola üret…"), m_generate);
    auto* const clear = menu.addAction(tr("Panoyu temizle"), m_clearClipboard, &QAction::trigger);
    const auto showCountdown = [this, clear] { clear->setEnabled(m_environment.clipboard.secondsRemaining() > 0); };
    m_countdown = m_environment.clipboard.observe(showCountdown);
    showCountdown();
}

void Commands::showGroupColumn(bool isShown) {
    m_groupColumn->setText(isShown ? tr("Yan Sütunu Gizle") : tr("Yan Sütunu Göster"));
}

void Commands::setCovered(bool isCovered) {
    m_isCovered = isCovered;
    showEnabled();
}

void Commands::setWaiting(bool isWaiting) {
    m_isWaiting = isWaiting;
    showEnabled();
}

/// While a key is derived the session takes nothing but its end.
bool Commands::isHeldBack(const QAction* action) const {
    const std::initializer_list<const QAction*> never{m_lock, m_close, m_quit, m_settings, m_clearClipboard};
    return m_state.derivation() && std::ranges::find(never, action) == never.end();
}

void Commands::connectState() {
    for (const auto signal : {&AppState::databaseChanged, &AppState::databaseURLChanged, &AppState::isLockedChanged,
                              &AppState::isDirtyChanged, &AppState::undoLabelChanged, &AppState::redoLabelChanged,
                              &AppState::selectedEntryIDsChanged, &AppState::selectedGroupIDChanged,
                              &AppState::searchTextChanged, &AppState::routeChanged})
        connect(&m_state, signal, this, &Commands::showEnabled);
    connect(m_text, &TextCommands::allRowsWanted, this, [this] {
        std::vector<UUID> ids;
        for (const auto* entry : m_state.visibleEntries())
            ids.push_back(entry->id);
        std::ranges::sort(ids);  // a set takes what is sorted many times as fast
        m_state.setSelectedEntryIDs(std::set(ids.begin(), ids.end()));
    });
}

void Commands::showEnabled() {
    m_hasFocusedEntry = m_state.focusedEntry() != nullptr;
    for (const auto& [action, rule] : m_rules)
        action->setEnabled((this->*rule)() && !(m_isWaiting && isHeldBack(action)));
    m_text->setRowsInReach(isInReach());
    m_moves->showEnabled(isInReach());
    showUndoLabels();
}

void Commands::showUndoLabels() {
    const auto named = [](const QString& verb, const std::optional<std::string>& label) {
        return label ? verb + QStringLiteral(" — ") + qtText(*label) : verb;
    };
    m_undo->setText(named(tr("Geri Al"), m_state.undoLabel()));
    m_redo->setText(named(tr("Yinele"), m_state.redoLabel()));
}

bool Commands::canSave() const {
    return m_state.canSave() && m_state.isDirty();
}

bool Commands::hasDatabase() const {
    return m_state.database().has_value();
}

bool Commands::isUnlocked() const {
    return !m_state.isLocked();
}

bool Commands::canUndo() const {
    return m_state.canUndo();
}

bool Commands::canRedo() const {
    return m_state.canRedo();
}

/// Whether the columns can be worked in: a sheet over them takes the keys that would change what it hides.
bool Commands::isInReach() const {
    return isUnlocked() && !m_isCovered && !m_state.route();
}

bool Commands::hasFocusedEntry() const {
    return isInReach() && m_hasFocusedEntry;
}

bool Commands::hasSelection() const {
    return isInReach() && !m_state.selectedEntryIDs().empty();
}

bool Commands::showsNoRoute() const {
    return !m_state.route();
}

/// Whether another sheet may come: in place of a form it would throw away what has been typed there.
bool Commands::losesNoForm() const {
    const auto& route = m_state.route();
    return !route || std::holds_alternative<Route::Generator>(route->sheet);
}

void Commands::createDatabase() {
    const auto file = FilePanels::newDatabaseDestination(&m_window, m_state.databaseURL());
    if (!file)
        return;
    emit sessionWillEnd();
    m_state.setRoute(std::nullopt);
    m_state.prepareNew(file->file, AppState::Replacing(file->replaces));
    m_state.setStatusMessage("Ana parolayı belirleyip kasayı oluşturun.");
}

void Commands::openDatabase() {
    const auto file = FilePanels::chooseDatabase(&m_window, m_state.databaseURL());
    if (!file)
        return;
    emit sessionWillEnd();
    m_state.prepare(*file);
}

void Commands::save() {
    const Waiting waiting;
    m_state.save();
}

void Commands::saveAs() {
    const auto& url = m_state.databaseURL();
    const auto suggested = url ? qtPath(url->filename()) : QStringLiteral("Kasam.kdbx");
    const auto file = FilePanels::saveAsDestination(&m_window, suggested, url);
    if (!file)
        return;
    const Waiting waiting;
    m_state.saveAs(*file);
}

void Commands::lock() {
    emit sessionWillEnd();
    const Waiting waiting;
    m_state.lock();
}

void Commands::closeDatabase() {
    emit sessionWillEnd();
    const Waiting waiting;
    m_state.closeDatabase();
}

void Commands::showNewEntry() {
    if (const auto group = groupForNew())
        m_state.setRoute(Route::newEntry(*group));
}

void Commands::showNewGroup() {
    if (const auto parent = groupForNew())
        m_state.setRoute(Route::newGroup(*parent));
}

void Commands::showEditor() {
    if (const auto* entry = m_state.focusedEntry())
        m_state.setRoute(Route::editEntry(entry->id));
}

std::optional<UUID> Commands::groupForNew() const {
    const auto* root = m_state.root();
    return root ? m_state.selectedGroupID().value_or(root->id) : std::optional<UUID>();
}
