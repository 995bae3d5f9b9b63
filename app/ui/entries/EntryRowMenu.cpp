// SPDX-License-Identifier: MIT
#include "app/ui/entries/EntryRowMenu.h"

#include "app/state/AppState.h"
#include "app/state/GroupTree.h"
#include "app/ui/commands/Command.h"
#include "app/ui/commands/RowMenu.h"

#include <QMenu>

namespace {

using ID = Command::ID;

/// With the entry as the vault has it when the item is chosen; not if it has gone by then.
std::function<void()> onEntry(AppState& state, const UUID& id, const Command& command) {
    return [&state, id, &command] {
        const auto* root = state.root();
        if (const auto* entry = root ? GroupTree::findEntry(*root, id) : nullptr)
            command(state, entry);
    };
}

}  // namespace

std::set<UUID> EntryRowMenu::targetIDs(const AppState& state, const UUID& entryID) {
    const auto& selected = state.selectedEntryIDs();
    return selected.contains(entryID) ? selected : std::set{entryID};
}

QMenu* EntryRowMenu::make(AppState& state, const KdbxEntry& entry, QWidget* parent,
                          const std::function<void(const std::set<UUID>&)>& move) {
    RowMenu menu(state, parent);
    const auto id = entry.id;
    const auto add = [&](ID command) {
        return menu.add(Command::of(command), onEntry(state, id, Command::of(command)));
    };
    const auto addForAll = [&](ID command) {
        return menu.add(Command::of(command),
                        [&state, id, command] { Command::of(command)(state, targetIDs(state, id)); });
    };
    const bool hasURL = !entry.url.empty();
    add(ID::copyUsername);
    add(ID::copyPassword);
    add(ID::copyURL)->setEnabled(hasURL);
    menu.addLine();
    add(ID::autoType);
    add(ID::openURL)->setEnabled(hasURL);
    menu.addLine();
    add(ID::edit);
    addForAll(ID::duplicate);
    menu.addLine();
    addForAll(ID::remove);
    menu.addLine();
    menu.add(Command::of(ID::moveEntries), [&state, id, move] { move(targetIDs(state, id)); });
    return menu.menu();
}
