// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/ui/commands/Command.h"
#include "app/ui/commands/Commands.h"

#include <QWidget>

#include <algorithm>
#include <vector>

namespace {

using ID = Command::ID;
using Menu = Command::Place::Menu;

/// A form for something new in the group that the list shows.
template <Route (*form)(UUID)>
void showForm(AppState& state) {
    if (const auto* const root = state.root())
        state.setRoute(form(state.selectedGroupID().value_or(root->id)));
}

void showEditor(AppState& state, const KdbxEntry* entry) {
    if (const auto* const edited = entry != nullptr ? entry : state.focusedEntry())
        state.setRoute(Route::editEntry(edited->id));
}

std::vector<Command> fileCommands() {
    return {
        {.place = {Menu::file, 0},
         .title = QStringLiteral("Yeni Veritabanı…"),
         .keys = {Qt::CTRL | Qt::Key_N},
         .act = [](Commands& commands) { commands.createDatabase(); }},
        {.place = {Menu::file, 0},
         .title = QStringLiteral("Veritabanı Aç…"),
         .keys = {Qt::CTRL | Qt::Key_O},
         .act = [](Commands& commands) { commands.openDatabase(); }},
        {.id = ID::save,
         .place = {Menu::file, 1},
         .title = QStringLiteral("Kaydet"),
         .keys = {Qt::CTRL | Qt::Key_S},
         .isEnabled = &Commands::canSave,
         .act = [](Commands& commands) { commands.save(); },
         .symbol = QStringLiteral("floppy")},
        {.place = {Menu::file, 1},
         .title = QStringLiteral("Farklı Kaydet…"),
         .keys = {Qt::CTRL | Qt::SHIFT | Qt::Key_S},
         .isEnabled = &Commands::hasDatabase,
         .act = [](Commands& commands) { commands.saveAs(); }},
        {.id = ID::lock,
         .place = {Menu::file, 2},
         .title = QStringLiteral("Kasayı Kilitle"),
         .keys = {Qt::CTRL | Qt::Key_L},
         .isEnabled = &Commands::isUnlocked,
         .act = [](Commands& commands) { commands.lock(); },
         .symbol = QStringLiteral("lock"),
         .worksWhileDeriving = true},
        {.place = {Menu::file, 2},
         .title = QStringLiteral("Veritabanını Kapat"),
         .keys = {Qt::CTRL | Qt::SHIFT | Qt::Key_W},
         .isEnabled = &Commands::hasDatabase,
         .act = [](Commands& commands) { commands.closeDatabase(); },
         .worksWhileDeriving = true},
        {.id = ID::quit,
         .place = {Menu::file, 3},
         .title = QStringLiteral("Çık"),
         .keys = {Qt::CTRL | Qt::Key_Q},
         .act = [](Commands& commands) { commands.window().close(); },
         .worksWhileDeriving = true,
         .role = QAction::QuitRole},
    };
}

std::vector<Command> editCommands() {
    return {
        {.id = ID::undo,
         .place = {Menu::edit, 0},
         .title = QStringLiteral("Geri Al"),
         .keys = {Qt::CTRL | Qt::Key_Z},
         .isEnabled = &Commands::canUndo,
         .act = [](AppState& state) { state.undo(); },
         .repeats = true},
        {.id = ID::redo,
         .place = {Menu::edit, 0},
         .title = QStringLiteral("Yinele"),
         .keys = {Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y},
         .isEnabled = &Commands::canRedo,
         .act = [](AppState& state) { state.redo(); },
         .repeats = true},
        {.place = {Menu::edit, 3},
         .title = QStringLiteral("Ayarlar…"),
         .keys = {Qt::CTRL | Qt::Key_Comma},
         .act = [](Commands& commands) { emit commands.settingsWanted(); },
         .worksWhileDeriving = true,
         .role = QAction::PreferencesRole},
    };
}

std::vector<Command> entryCommands() {
    return {
        {.id = ID::copyUsername,
         .place = {Menu::entry, 0},
         .title = QStringLiteral("Kullanıcı Adını Kopyala"),
         .keys = {Qt::CTRL | Qt::Key_B},
         .isEnabled = &Commands::hasFocusedEntry,
         .act = [](AppState& state, const KdbxEntry* entry) { state.copyUsername(entry); },
         .symbol = QStringLiteral("person")},
        {.id = ID::copyPassword,
         .place = {Menu::entry, 0},
         .title = QStringLiteral("Parolayı Kopyala"),
         .keys = {Qt::CTRL | Qt::Key_C},
         .isEnabled = &Commands::hasFocusedEntry,
         .act = [](AppState& state, const KdbxEntry* entry) { state.copyPassword(entry); },
         .symbol = QStringLiteral("key.horizontal")},
        {.id = ID::copyURL,
         .place = {Menu::entry, 0},
         .title = QStringLiteral("Adresi Kopyala"),
         .keys = {Qt::CTRL | Qt::SHIFT | Qt::Key_U},
         .isEnabled = &Commands::hasFocusedEntry,
         .act = [](AppState& state, const KdbxEntry* entry) { state.copyURL(entry); }},
        {.id = ID::autoType,
         .place = {Menu::entry, 1},
         .title = QStringLiteral("Otomatik Yaz"),
         .keys = {Qt::CTRL | Qt::SHIFT | Qt::Key_V},
         .isEnabled = &Commands::hasFocusedEntry,
         .act = [](AppState& state, const KdbxEntry* entry) { state.performAutoType(entry); },
         .symbol = QStringLiteral("keyboard")},
        {.id = ID::openURL,
         .place = {Menu::entry, 1},
         .title = QStringLiteral("Adresi Tarayıcıda Aç"),
         .keys = {Qt::CTRL | Qt::SHIFT | Qt::Key_Enter, Qt::CTRL | Qt::SHIFT | Qt::Key_Return},
         .isEnabled = &Commands::hasFocusedEntry,
         .act = [](AppState& state, const KdbxEntry* entry) { state.openURL(entry); },
         .symbol = QStringLiteral("arrow.up.right.square")},
        {.id = ID::newEntry,
         .place = {Menu::entry, 2},
         .title = QStringLiteral("Yeni Kayıt…"),
         .keys = {Qt::CTRL | Qt::Key_I},
         .isEnabled = &Commands::isInReach,
         .act = &showForm<&Route::newEntry>,
         .symbol = QStringLiteral("plus")},
        {.id = ID::newGroup,
         .place = {Menu::entry, 2},
         .title = QStringLiteral("Yeni Grup…"),
         .keys = {Qt::CTRL | Qt::SHIFT | Qt::Key_G},
         .isEnabled = &Commands::isInReach,
         .act = &showForm<&Route::newGroup>,
         .symbol = QStringLiteral("folder.badge.plus")},
        {.id = ID::edit,
         .place = {Menu::entry, 2},
         .title = QStringLiteral("Düzenle…"),
         .keys = {Qt::CTRL | Qt::Key_E},
         .isEnabled = &Commands::hasFocusedEntry,
         .act = &showEditor,
         .symbol = QStringLiteral("pencil")},
        {.id = ID::duplicate,
         .title = QStringLiteral("Çoğalt"),
         .act = [](AppState& state, const std::set<UUID>& ids) { state.duplicateEntries(ids); }},
        {.id = ID::remove,
         .place = {Menu::entry, 2},
         .title = QStringLiteral("Sil"),
         .keys = {Qt::CTRL | Qt::Key_Delete},
         .isEnabled = &Commands::hasSelection,
         .act = [](AppState& state, const std::set<UUID>& ids) { state.deleteEntries(ids); }},
    };
}

std::vector<Command> moveCommands() {
    return {
        {.id = ID::moveEntries,
         .place = {Menu::entry, 3},
         .title = QStringLiteral("Gruba Taşı…"),
         .keys = {Qt::CTRL | Qt::SHIFT | Qt::Key_M},
         .isEnabled = &Commands::hasSelection,
         .act = [](Commands& commands) { commands.moveEntries(); }},
        {.id = ID::moveGroup,
         .place = {Menu::entry, 3},
         .title = QStringLiteral("Grubu Taşı…"),
         .isEnabled = &Commands::hasMovableGroup,
         .act = [](Commands& commands) { commands.moveGroup(); }},
        {.place = {Menu::entry, 3},
         .title = QStringLiteral("Yukarı Taşı"),
         .keys = {Qt::ALT | Qt::Key_Up},
         .isEnabled = &Commands::canShift,
         .act = [](Commands& commands) { commands.shift(AppState::Shift::up); },
         .repeats = true},
        {.place = {Menu::entry, 3},
         .title = QStringLiteral("Aşağı Taşı"),
         .keys = {Qt::ALT | Qt::Key_Down},
         .isEnabled = &Commands::canShift,
         .act = [](Commands& commands) { commands.shift(AppState::Shift::down); },
         .repeats = true},
    };
}

std::vector<Command> groupCommands() {
    return {
        {.id = ID::newEntryInGroup,
         .title = QStringLiteral("Yeni kayıt"),
         .act = [](AppState& state, const UUID& id) { state.setRoute(Route::newEntry(id)); }},
        {.id = ID::newSubgroup,
         .title = QStringLiteral("Yeni alt grup"),
         .act = [](AppState& state, const UUID& id) { state.setRoute(Route::newGroup(id)); }},
        {.id = ID::editGroup,
         .title = QStringLiteral("Grubu düzenle"),
         .act = [](AppState& state, const UUID& id) { state.setRoute(Route::editGroup(id)); }},
        {.id = ID::deleteGroup,
         .title = QStringLiteral("Grubu sil"),
         .act = [](AppState& state, const UUID& id) { state.deleteGroup(id); }},
    };
}

std::vector<Command> otherCommands() {
    return {
        {.id = ID::generate,
         .place = {Menu::tools, 0},
         .title = QStringLiteral("Parola Üret…"),
         .keys = {Qt::CTRL | Qt::Key_G},
         .isEnabled = &Commands::losesNoForm,
         .act = [](AppState& state) { state.setRoute(Route::generator(std::nullopt)); }},
        {.id = ID::clearClipboard,
         .place = {Menu::tools, 0},
         .title = QStringLiteral("Panoyu Şimdi Temizle"),
         .keys = {Qt::CTRL | Qt::SHIFT | Qt::Key_K},
         .act = [](Commands& commands) { commands.clearClipboard(); },
         .worksWhileDeriving = true},
        {.place = {Menu::view, 0},
         .title = QStringLiteral("Ara"),
         .keys = {Qt::CTRL | Qt::Key_F},
         .isEnabled = &Commands::isInReach,
         .act = [](AppState& state) { state.focusSearch(); }},
        {.id = ID::groupColumn,
         .place = {Menu::view, 1},
         .title = QStringLiteral("Yan Sütunu Gizle"),
         .keys = {Qt::Key_F9},
         .isEnabled = &Commands::isInReach,
         .act = [](Commands& commands) { emit commands.groupColumnToggled(); }},
        {.place = {Menu::view, 1},
         .title = QStringLiteral("Sütun Genişliğini Ayarla"),
         .keys = {Qt::Key_F8},
         .isEnabled = &Commands::isInReach,
         .act = [](Commands& commands) { emit commands.columnWidthsWanted(); }},
        {.place = {Menu::help, 0},
         .title = QStringLiteral("Brenvik Hakkında"),
         .isEnabled = &Commands::showsNoRoute,
         .act = [](Commands& commands) { emit commands.aboutWanted(); },
         .role = QAction::AboutRole},
    };
}

std::vector<Command> makeTable() {
    std::vector<Command> table;
    for (const auto& part :
         {fileCommands(), editCommands(), entryCommands(), moveCommands(), groupCommands(), otherCommands()})
        table.insert(table.end(), part.begin(), part.end());
    return table;
}

}  // namespace

std::span<const Command> Command::table() {
    static const auto table = makeTable();
    return table;
}

const Command& Command::of(ID id) {
    return *std::ranges::find(table(), id, &Command::id);
}
