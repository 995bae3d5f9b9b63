// SPDX-License-Identifier: MIT
#include "app/ui/EntryRowMenu.h"

#include "app/state/AppState.h"
#include "app/state/GroupTree.h"

#include <QCoreApplication>
#include <QMenu>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("EntryRowMenu", text);
}

/// Calls a verb with the entry as the vault has it when the item is chosen; not if it has gone by then.
std::function<void()> onEntry(AppState& state, const UUID& id, void (AppState::*verb)(const KdbxEntry*)) {
    return [&state, id, verb] {
        const auto* root = state.root();
        if (const auto* entry = root ? GroupTree::findEntry(*root, id) : nullptr)
            (state.*verb)(entry);
    };
}

}  // namespace

std::set<UUID> EntryRowMenu::targetIDs(const AppState& state, const UUID& entryID) {
    const auto& selected = state.selectedEntryIDs();
    return selected.contains(entryID) ? selected : std::set{entryID};
}

QMenu* EntryRowMenu::make(AppState& state, const KdbxEntry& entry, QWidget* parent,
                          const std::function<void(const std::set<UUID>&)>& move) {
    auto* const menu = new QMenu(parent);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(&state, &AppState::isLockedChanged, menu, &QMenu::close);
    QObject::connect(menu, &QMenu::triggered, menu, &QMenu::close);  // a screen reader chooses without closing it

    const auto id = entry.id;
    const auto add = [&](const char* text, const std::function<void()>& act) {
        auto* const item = menu->addAction(tr(text));
        QObject::connect(item, &QAction::triggered, &state, act);
        return item;
    };
    const bool hasURL = !entry.url.empty();
    add("Kullanıcı adını kopyala", onEntry(state, id, &AppState::copyUsername));
    add("Parolayı kopyala", onEntry(state, id, &AppState::copyPassword));
    add("Adresi kopyala", onEntry(state, id, &AppState::copyURL))->setEnabled(hasURL);
    menu->addSeparator();
    add("Otomatik yaz", onEntry(state, id, &AppState::performAutoType));
    add("Adresi tarayıcıda aç", onEntry(state, id, &AppState::openURL))->setEnabled(hasURL);
    menu->addSeparator();
    add("Düzenle…", [&state, id] { state.setRoute(AppState::Route::editEntry(id)); });
    add("Çoğalt", [&state, id] { state.duplicateEntries(targetIDs(state, id)); });
    menu->addSeparator();
    add("Sil", [&state, id] { state.deleteEntries(targetIDs(state, id)); });
    menu->addSeparator();
    add("Gruba taşı…", [&state, id, move] { move(targetIDs(state, id)); });
    return menu;
}
