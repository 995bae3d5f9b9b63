// SPDX-License-Identifier: MIT
#include "app/ui/groups/GroupRowMenu.h"

#include "app/state/AppState.h"
#include "app/ui/commands/Command.h"
#include "app/ui/commands/RowMenu.h"

#include <QMenu>

namespace {

using ID = Command::ID;

}  // namespace

QMenu* GroupRowMenu::make(AppState& state, const KdbxGroup& group, QWidget* parent, const std::function<void()>& move) {
    RowMenu menu(state, parent);
    const auto id = group.id;
    const bool isRoot = state.root() && state.root()->id == id;
    const auto add = [&](ID command) {
        return menu.add(Command::of(command), [&state, id, command] { Command::of(command)(state, id); });
    };
    add(ID::newEntryInGroup);
    add(ID::newSubgroup);
    menu.addLine();
    add(ID::editGroup)->setEnabled(!isRoot);
    add(ID::deleteGroup)->setEnabled(!isRoot);
    if (!group.groups.empty()) {
        menu.addLine();
        const bool isExpanded = group.isExpanded;
        menu.add(GroupRowMenu::expansionVerb(isExpanded),
                 [&state, id, isExpanded] { state.setGroupExpanded(id, !isExpanded); });
    }
    menu.addLine();
    menu.add(Command::of(ID::moveGroup), move)->setEnabled(!isRoot);
    return menu.menu();
}

QString GroupRowMenu::expansionVerb(bool isExpanded) {
    return isExpanded ? QStringLiteral("Daralt") : QStringLiteral("Genişlet");
}
