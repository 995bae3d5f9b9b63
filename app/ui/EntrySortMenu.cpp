// SPDX-License-Identifier: MIT
#include "app/ui/EntrySortMenu.h"

#include "app/state/AppState.h"
#include "app/ui/Texts.h"

#include <QActionGroup>

EntrySortMenu::EntrySortMenu(AppState& state, QWidget* parent) : QMenu(parent), m_state(state) {
    m_columns = addChoice(tr("Sırala"));
    for (const auto column : EntrySort::allCases) {
        auto* const item = m_columns->addAction(qtText(EntrySort::label(column)));
        item->setData(static_cast<int>(column));
        connect(item, &QAction::triggered, this,
                [this, column] { m_state.setSort({.column = column, .ascending = m_state.sort().ascending}); });
    }
    addActions(m_columns->actions());
    m_directions = addChoice(tr("Yön"));
    for (const bool ascending : {true, false}) {
        auto* const item = m_directions->addAction(ascending ? tr("Artan") : tr("Azalan"));
        item->setData(ascending);
        connect(item, &QAction::triggered, this,
                [this, ascending] { m_state.setSort({.column = m_state.sort().column, .ascending = ascending}); });
    }
    addActions(m_directions->actions());
    for (auto* const item : actions())
        item->setCheckable(!item->isSeparator());
    connect(&m_state, &AppState::sortChanged, this, &EntrySortMenu::showSort);
    connect(&m_state, &AppState::isLockedChanged, this, &QMenu::close);
    showSort();
}

QActionGroup* EntrySortMenu::addChoice(const QString& title) {
    if (!isEmpty())
        addSeparator();
    addSection(title);
    return new QActionGroup(this);
}

void EntrySortMenu::showSort() {
    for (auto* const item : m_columns->actions())
        item->setChecked(item->data().toInt() == static_cast<int>(m_state.sort().column));
    for (auto* const item : m_directions->actions())
        item->setChecked(item->data().toBool() == m_state.sort().ascending);
}
