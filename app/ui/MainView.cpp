// SPDX-License-Identifier: MIT
#include "app/ui/MainView.h"

#include "app/state/AppState.h"
#include "app/ui/EntryDetailPane.h"
#include "app/ui/EntryListView.h"
#include "app/ui/FocusKeeper.h"
#include "app/ui/GroupTreeView.h"
#include "app/ui/MoveCommands.h"
#include "app/ui/RescueBanner.h"
#include "app/ui/RowListView.h"
#include "app/ui/StatusBar.h"
#include "app/ui/Theme.h"
#include "app/ui/Toolbar.h"
#include "app/ui/components/SearchField.h"

#include <QSplitter>
#include <QVBoxLayout>

namespace {

struct ColumnWidth {
    int narrowest;
    int ideal;
    int widest;
};

constexpr ColumnWidth sidebarWidth{168, 210, 320};
constexpr ColumnWidth listWidth{250, 340, 560};
constexpr int narrowestDetail = 260;
constexpr int idealDetail = 468;

void limit(QWidget& column, const ColumnWidth& width) {
    column.setMinimumWidth(width.narrowest);
    column.setMaximumWidth(width.widest);
}

}  // namespace

MainView::MainView(const Environment& environment, Commands& commands, QWidget* parent)
    : QWidget(parent), m_groups(new GroupTreeView(environment.state)), m_entries(new EntryListView(environment.state)) {
    auto& state = environment.state;
    auto* const detail = new EntryDetailPane(environment);
    limit(*m_groups, sidebarWidth);
    limit(*m_entries, listWidth);
    detail->setMinimumWidth(narrowestDetail);

    auto* const columns = new QSplitter(Qt::Horizontal);
    columns->setHandleWidth(Metric::hairline);
    columns->setChildrenCollapsible(false);
    for (auto* const column : std::initializer_list<QWidget*>{m_groups, m_entries, detail})
        columns->addWidget(column);
    columns->setStretchFactor(2, 1);
    columns->setSizes({sidebarWidth.ideal, listWidth.ideal, idealDetail});

    auto* const rescue = new RescueBanner(state);
    connect(rescue, &RescueBanner::decided, this, &MainView::takeFocus);

    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    auto* const toolbar = new Toolbar(state, commands);
    rows->addWidget(toolbar);
    rows->addWidget(rescue);
    rows->addWidget(columns, 1);
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

void MainView::takeFocus() {
    // A list that an empty state stands for would take the focus later, when it shows, from whoever has it by then.
    auto* const entries = m_entries->list();
    (entries->isVisibleTo(this) ? entries : m_groups->list())->setFocus();
}
