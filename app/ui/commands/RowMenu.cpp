// SPDX-License-Identifier: MIT
#include "app/ui/commands/RowMenu.h"

#include "app/state/AppState.h"

#include <QMenu>

RowMenu::RowMenu(AppState& state, QWidget* parent) : m_state(state), m_menu(new QMenu(parent)) {
    m_menu->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(&state, &AppState::isLockedChanged, m_menu, &QMenu::close);
    QObject::connect(m_menu, &QMenu::triggered, m_menu, &QMenu::close);  // a screen reader chooses without closing it
}

QAction* RowMenu::add(const QString& text, const std::function<void()>& act) {
    auto* const item = m_menu->addAction(text);
    QObject::connect(item, &QAction::triggered, &m_state, act);
    return item;
}

void RowMenu::addLine() {
    m_menu->addSeparator();
}
