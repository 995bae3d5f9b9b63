// SPDX-License-Identifier: MIT
#include "app/ui/commands/Commands.h"

#include "app/state/AppState.h"
#include "app/ui/commands/TextCommands.h"
#include "app/ui/components/FilePanels.h"
#include "app/ui/components/Texts.h"
#include "app/ui/components/WaitCursor.h"
#include "core/clipboard/ClipboardService.h"

#include <QAction>
#include <QApplication>
#include <QMenuBar>

#include <algorithm>
#include <set>
#include <variant>
#include <vector>

namespace {

constexpr int textBlock = 1;  // of the menu "Düzen": what is done with a text, and behind it the selection of all

}  // namespace

Commands::Commands(const Environment& environment, QWidget& window)
    : QObject(&window),
      m_environment(environment),
      m_state(environment.state),
      m_window(window),
      m_text(new TextCommands(window)) {
    for (const auto& command : Command::table())
        if (command.place.menu != Command::Place::Menu::none)
            makeAction(command);
    showGroupColumn(true);
    connectState();
    showEnabled();
}

void Commands::makeAction(const Command& command) {
    auto* const action = new QAction(command.title, this);
    action->setShortcuts(command.keys);
    action->setAutoRepeat(command.repeats);
    action->setMenuRole(command.role);
    connect(action, &QAction::triggered, this, [this, &command] {
        if (!isHeldBack(command))
            perform(command);
    });
    m_actions.emplace_back(&command, action);
}

void Commands::perform(const Command& command) {
    if (const auto* const ask = std::get_if<Command::OnWindow>(&command.act))
        (*ask)(*this);
    else if (std::holds_alternative<Command::OnSession>(command.act))
        command(m_state);
    else if (std::holds_alternative<Command::OnEntry>(command.act))
        command(m_state, nullptr);
    else
        command(m_state, m_state.selectedEntryIDs());
}

QAction* Commands::action(Command::ID id) const {
    return std::ranges::find(m_actions, id, [](const auto& made) { return made.first->id; })->second;
}

QList<QAction*> Commands::everywhere() const {
    return {action(Command::ID::lock), action(Command::ID::quit)};
}

QList<QAction*> Commands::actionsOf(Command::Place::Menu menu, int block) const {
    QList<QAction*> actions;
    if (menu == Command::Place::Menu::edit && block == textBlock)
        return m_text->editing();
    if (menu == Command::Place::Menu::edit && block == textBlock + 1)
        return {m_text->selectingAll()};
    for (const auto& [command, action] : m_actions)
        if (command->place.menu == menu && command->place.block == block)
            actions += action;
    return actions;
}

void Commands::fill(QMenuBar& bar) {
    using Menu = Command::Place::Menu;
    static constexpr int mostBlocks = 4;
    const auto add = [&](Menu place, const QString& title) {
        auto* const menu = bar.addMenu(title);
        for (int block = 0; block < mostBlocks; ++block) {
            const auto actions = actionsOf(place, block);
            if (!actions.isEmpty() && !menu->isEmpty())
                menu->addSeparator();
            menu->addActions(actions);
        }
        return menu;
    };
    add(Menu::file, QStringLiteral("&Dosya"));
    connect(add(Menu::edit, QStringLiteral("Dü&zen")), &QMenu::aboutToShow, m_text, &TextCommands::showEnabled);
    add(Menu::entry, QStringLiteral("&Kayıt"));
    add(Menu::tools, QStringLiteral("&Araçlar"));
    add(Menu::view, QStringLiteral("&Görünüm"));
    add(Menu::help, QStringLiteral("&Yardım"));
}

void Commands::fillMore(QMenu& menu) {
    // The same commands in the words of a menu beside the entry.
    const auto add = [&](Command::ID id) {
        auto* const command = action(id);
        auto* const item = menu.addAction(Command::of(id).text(), command, &QAction::trigger);
        const auto follow = [item, command] { item->setEnabled(command->isEnabled()); };
        connect(command, &QAction::changed, item, follow);
        follow();
    };
    menu.addSection(QStringLiteral("Seçili kayıt"));
    add(Command::ID::copyUsername);
    add(Command::ID::copyPassword);
    add(Command::ID::autoType);
    menu.addSeparator();
    add(Command::ID::newGroup);
    add(Command::ID::generate);
    auto* const clear =
        menu.addAction(QStringLiteral("Panoyu temizle"), action(Command::ID::clearClipboard), &QAction::trigger);
    const auto showCountdown = [this, clear] { clear->setEnabled(m_environment.clipboard.secondsRemaining() > 0); };
    m_countdown = m_environment.clipboard.observe(showCountdown);
    showCountdown();
}

void Commands::showGroupColumn(bool isShown) const {
    action(Command::ID::groupColumn)
        ->setText(isShown ? QStringLiteral("Yan Sütunu Gizle") : QStringLiteral("Yan Sütunu Göster"));
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
bool Commands::isHeldBack(const Command& command) const {
    return m_state.derivation() && !command.worksWhileDeriving;
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
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { followFocus(now); });
}

void Commands::followFocus(const QWidget* now) {
    if (!now || now->window() != &m_window || qobject_cast<const QMenuBar*>(now) || qobject_cast<const QMenu*>(now))
        return;
    m_isAmongGroups = now == m_groupList;
    showEnabled();
}

void Commands::showEnabled() {
    m_hasFocusedEntry = m_state.focusedEntry() != nullptr;
    for (const auto& [command, action] : m_actions)
        action->setEnabled((!command->isEnabled || (this->*command->isEnabled)()) &&
                           !(m_isWaiting && isHeldBack(*command)));
    m_text->setRowsInReach(isInReach());
    showUndoLabels();
}

void Commands::showUndoLabels() {
    const auto named = [](const QString& verb, const std::optional<std::string>& label) {
        return label ? verb + QStringLiteral(" — ") + qtText(*label) : verb;
    };
    for (const auto& [id, label] :
         {std::pair(Command::ID::undo, m_state.undoLabel()), {Command::ID::redo, m_state.redoLabel()}})
        action(id)->setText(named(Command::of(id).title, label));
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

bool Commands::hasMovableGroup() const {
    return isInReach() && movableGroup();
}

bool Commands::canShift() const {
    return m_isAmongGroups ? hasMovableGroup() : hasSelection() && !m_state.isSearching();
}

/// The selected group; none where it is the root.
std::optional<UUID> Commands::movableGroup() const {
    const auto& id = m_state.selectedGroupID();
    return id && m_state.root() && *id != m_state.root()->id ? id : std::nullopt;
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

void Commands::openDatabase(const std::filesystem::path& file) {
    emit sessionWillEnd();
    m_state.prepareExpected(file);
}

void Commands::save() {
    const WaitCursor waiting;
    m_state.save();
}

void Commands::saveAs() {
    const auto& url = m_state.databaseURL();
    const auto suggested = url ? qtPath(url->filename()) : QStringLiteral("Kasam.kdbx");
    const auto file = FilePanels::saveAsDestination(&m_window, suggested, url);
    if (!file)
        return;
    const WaitCursor waiting;
    m_state.saveAs(*file);
}

void Commands::lock() {
    emit sessionWillEnd();
    const WaitCursor waiting;
    m_state.lock();
}

void Commands::closeDatabase() {
    emit sessionWillEnd();
    const WaitCursor waiting;
    m_state.closeDatabase();
}

void Commands::clearClipboard() {
    m_environment.clipboard.clearNow();
}

void Commands::moveEntries() {
    emit moveWanted({.entryIDs = m_state.selectedEntryIDs(), .groupID = std::nullopt});
}

void Commands::moveGroup() {
    emit moveWanted({.entryIDs = {}, .groupID = movableGroup()});
}

void Commands::shift(AppState::Shift direction) {
    if (!m_isAmongGroups)
        m_state.shiftEntries(std::set(m_state.selectedEntryIDs()), direction);
    else if (const auto id = movableGroup())
        m_state.shiftGroup(*id, direction);
}
