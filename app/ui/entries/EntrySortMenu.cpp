// SPDX-License-Identifier: MIT
#include "app/ui/entries/EntrySortMenu.h"

#include "app/state/AppState.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/Texts.h"
#include "app/ui/theme/Theme.h"

#include <QActionGroup>
#include <QWidgetAction>

namespace {

constexpr int titleMargin = 10;  // where the menu's texts begin

}  // namespace

EntrySortMenu::EntrySortMenu(AppState& state, QWidget* parent) : QMenu(parent), m_state(state) {
    setAccessibleName(QStringLiteral("Sıralama"));
    m_columns = addChoice(QStringLiteral("Sırala"));
    for (const auto column : EntrySort::allCases) {
        auto* const item = m_columns->addAction(qtText(EntrySort::label(column)));
        item->setData(static_cast<int>(column));
        connect(item, &QAction::triggered, this,
                [this, column] { m_state.setSort({.column = column, .ascending = m_state.sort().ascending}); });
    }
    addActions(m_columns->actions());
    m_directions = addChoice(QStringLiteral("Yön"));
    for (const bool ascending : {true, false}) {
        auto* const item = m_directions->addAction(ascending ? QStringLiteral("Artan") : QStringLiteral("Azalan"));
        item->setData(ascending);
        connect(item, &QAction::triggered, this,
                [this, ascending] { m_state.setSort({.column = m_state.sort().column, .ascending = ascending}); });
    }
    addActions(m_directions->actions());
    for (const auto* const choice : {m_columns, m_directions})
        for (auto* const item : choice->actions())
            item->setCheckable(true);
    connect(&m_state, &AppState::sortChanged, this, &EntrySortMenu::showSort);
    connect(&m_state, &AppState::isLockedChanged, this, &QMenu::close);
    showSort();
}

/// A group of items of which one is chosen, under its title.
QActionGroup* EntrySortMenu::addChoice(const QString& title) {
    if (!isEmpty())
        addSeparator();
    auto* const label = new TextLabel(title, BrandFont::label(), Palette::textSoft);
    label->setContentsMargins(titleMargin, Metric::xs, titleMargin, Metric::xs);
    auto* const heading = new QWidgetAction(this);
    heading->setText(title);
    heading->setEnabled(false);
    heading->setDefaultWidget(label);
    addAction(heading);
    return new QActionGroup(this);
}

void EntrySortMenu::showSort() {
    for (auto* const item : m_columns->actions())
        item->setChecked(item->data().toInt() == static_cast<int>(m_state.sort().column));
    for (auto* const item : m_directions->actions())
        item->setChecked(item->data().toBool() == m_state.sort().ascending);
}
