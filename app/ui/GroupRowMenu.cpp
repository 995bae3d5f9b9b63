// SPDX-License-Identifier: MIT
#include "app/ui/GroupRowMenu.h"

#include "app/state/AppState.h"

#include <QCoreApplication>
#include <QMenu>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("GroupRowMenu", text);
}

}  // namespace

QMenu* GroupRowMenu::make(AppState& state, const KdbxGroup& group, QWidget* parent, const std::function<void()>& move) {
    auto* const menu = new QMenu(parent);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(&state, &AppState::isLockedChanged, menu, &QMenu::close);
    QObject::connect(menu, &QMenu::triggered, menu, &QMenu::close);  // a screen reader chooses without closing it

    const auto id = group.id;
    const bool isRoot = state.root() && state.root()->id == id;
    const auto add = [&](const char* text, const std::function<void()>& act) {
        auto* const item = menu->addAction(tr(text));
        QObject::connect(item, &QAction::triggered, &state, act);
        return item;
    };
    add("Yeni kayıt", [&state, id] { state.setRoute(AppState::Route::newEntry(id)); });
    add("Yeni alt grup", [&state, id] { state.setRoute(AppState::Route::newGroup(id)); });
    menu->addSeparator();
    add("Grubu düzenle", [&state, id] { state.setRoute(AppState::Route::editGroup(id)); })->setEnabled(!isRoot);
    add("Grubu sil", [&state, id] { state.deleteGroup(id); })->setEnabled(!isRoot);
    if (!group.groups.empty()) {
        menu->addSeparator();
        const bool isExpanded = group.isExpanded;
        add(isExpanded ? "Daralt" : "Genişlet", [&state, id, isExpanded] { state.setGroupExpanded(id, !isExpanded); });
    }
    menu->addSeparator();
    add("Grubu taşı…", move)->setEnabled(!isRoot);
    return menu;
}
