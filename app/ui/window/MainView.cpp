// SPDX-License-Identifier: MIT
#include "app/ui/window/MainView.h"

#include "app/state/AppState.h"
#include "app/ui/commands/Commands.h"
#include "app/ui/components/BareLayout.h"
#include "app/ui/components/SearchField.h"
#include "app/ui/detail/EntryDetailPane.h"
#include "app/ui/entries/EntryListView.h"
#include "app/ui/groups/GroupTreeView.h"
#include "app/ui/rows/RowListView.h"
#include "app/ui/window/Columns.h"
#include "app/ui/window/FocusKeeper.h"
#include "app/ui/window/RescueBanner.h"
#include "app/ui/window/StatusBar.h"
#include "app/ui/window/Toolbar.h"

MainView::MainView(const Environment& environment, Commands& commands, QWidget* parent)
    : QWidget(parent), m_groups(new GroupTreeView(environment.state)), m_entries(new EntryListView(environment.state)) {
    auto& state = environment.state;
    auto* const detail = new EntryDetailPane(environment);
    m_columns = new Columns(environment.preferences, m_groups, m_entries, detail);
    connect(m_columns, &Columns::focusLost, this, &MainView::takeFocus);

    auto* const rescue = new RescueBanner(state);
    connect(rescue, &RescueBanner::decided, this, &MainView::takeFocus);

    auto* const rows = bareColumn(this, 0);
    auto* const toolbar = new Toolbar(state, commands);
    toolbar->startSearchAt(*m_entries);
    rows->addWidget(toolbar);
    rows->addWidget(rescue);
    rows->addWidget(m_columns, 1);
    rows->addWidget(new StatusBar(state, environment.clipboard));
    connectSearch(*toolbar->search());
    connect(m_entries, &EntryListView::moveWanted, this,
            [this](const std::set<UUID>& ids) { emit moveWanted({.entryIDs = ids, .groupID = std::nullopt}); });
    connect(m_groups, &GroupTreeView::moveWanted, this,
            [this](const UUID& id) { emit moveWanted({.entryIDs = {}, .groupID = id}); });
    new FocusKeeper(*this, [this] { takeFocus(); });
}

void MainView::connectSearch(const SearchField& search) {
    connect(&search, &SearchField::firstResultWanted, m_entries, &EntryListView::goToFirstResult);
    connect(&search, &SearchField::resultsWanted, m_entries, &EntryListView::goToResults);
    connect(&search, &SearchField::finished, this, &MainView::takeFocus);
    connect(m_entries, &EntryListView::searchEnded, this, &MainView::takeFocus);
}

RowListView* MainView::groupList() const {
    return m_groups->list();
}

bool MainView::areGroupsWanted() const {
    return m_columns->areGroupsWanted();
}

void MainView::setGroupsWanted(bool areWanted) {
    const bool hadFocus = m_groups->isAncestorOf(window()->focusWidget());
    m_columns->setGroupsWanted(areWanted);
    if (hadFocus && !m_groups->isVisible())
        takeFocus();
}

void MainView::goToNextDivider() {
    m_columns->goToNextDivider();
}

void MainView::takeFocus() {
    // A list that an empty state hides would take the focus later, when it shows, from the control that has it by then.
    auto* const entries = m_entries->list();
    (entries->isVisibleTo(this) ? entries : m_groups->list())->setFocus();
}
