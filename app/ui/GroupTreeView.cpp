// SPDX-License-Identifier: MIT
#include "app/ui/GroupTreeView.h"

#include "app/state/AppState.h"
#include "app/ui/GroupRowDelegate.h"
#include "app/ui/GroupTreeModel.h"
#include "app/ui/RowListView.h"
#include "app/ui/Texts.h"
#include "app/ui/Theme.h"
#include "app/ui/components/Card.h"
#include "app/ui/components/IconTile.h"
#include "app/ui/components/Labels.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace {

constexpr int headerHeight = 48;
constexpr int markSide = 20;
constexpr int nameSize = 14;

}  // namespace

GroupTreeView::GroupTreeView(AppState& state, QWidget* parent)
    : QWidget(parent),
      m_state(state),
      m_model(new GroupTreeModel(this)),
      m_name(new TextLabel({}, BrandFont::body(nameSize, QFont::DemiBold), Palette::text)),
      m_list(new RowListView(tr("Gruplar"))) {
    arrange();
    connectState();
    showGroups();
}

QWidget* GroupTreeView::makeHeader() {
    auto* const header = new QWidget;
    header->setFixedHeight(headerHeight);
    auto* const row = new QHBoxLayout(header);
    row->setContentsMargins(Metric::m, 0, Metric::m, 0);
    row->setSpacing(Metric::s);
    row->addWidget(new BrandMark(markSide));
    row->addWidget(m_name, 1);
    return header;
}

void GroupTreeView::arrange() {
    m_list->setModel(m_model);
    m_list->setItemDelegate(new GroupRowDelegate(m_list));
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeHeader());
    column->addWidget(new HairlineDivider);
    column->addWidget(m_list, 1);
}

void GroupTreeView::connectState() {
    connect(&m_state, &AppState::databaseChanged, this, &GroupTreeView::showGroups);
    connect(&m_state, &AppState::databaseURLChanged, this, &GroupTreeView::showGroups);
    connect(&m_state, &AppState::selectedGroupIDChanged, this, &GroupTreeView::showSelection);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, &GroupTreeView::storeSelection);
}

void GroupTreeView::showGroups() {
    m_name->setText(qtText(m_state.databaseName()));
    {
        const QScopedValueRollback showing(m_isShowing, true);
        m_model->show(m_state.database());
    }
    showSelection();
}

void GroupTreeView::showSelection() {
    const QScopedValueRollback showing(m_isShowing, true);
    const auto row = m_state.selectedGroupID() ? m_model->rowOf(*m_state.selectedGroupID()) : std::nullopt;
    if (row)
        m_list->setCurrentIndex(m_model->index(*row));
    else
        m_list->selectionModel()->clear();
}

void GroupTreeView::storeSelection() {
    const auto current = m_list->currentIndex();
    if (m_isShowing || !current.isValid())
        return;
    m_state.setSelectedGroupID(m_model->group(current.row()).id);
    m_state.setSelectedEntryIDs({});
}

bool GroupTreeView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list && event->type() == QEvent::KeyPress && answerKey(static_cast<QKeyEvent*>(event)->key()))
        return true;
    if (watched == m_list->viewport() && event->type() == QEvent::MouseButtonPress &&
        answerClick(static_cast<QMouseEvent*>(event)->pos()))
        return true;
    return QWidget::eventFilter(watched, event);
}

/// The arrow keys along the line of writing open and close a group.
bool GroupTreeView::answerKey(int key) {
    const auto current = m_list->currentIndex();
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    if (!current.isValid() || (key != Qt::Key_Left && key != Qt::Key_Right))
        return false;
    setExpanded(current.row(), (key == Qt::Key_Right) != isMirrored);
    return true;
}

bool GroupTreeView::answerClick(const QPoint& position) {
    const auto index = m_list->indexAt(position);
    if (!index.isValid() || !index.data(GroupTreeModel::hasChildrenRole).toBool())
        return false;
    const auto chevron = GroupRowDelegate::chevronArea(
        m_list->visualRect(index), index.data(GroupTreeModel::depthRole).toInt(), layoutDirection());
    if (!chevron.contains(position))
        return false;
    setExpanded(index.row(), !index.data(GroupTreeModel::isExpandedRole).toBool());
    return true;
}

void GroupTreeView::setExpanded(int row, bool isExpanded) {
    const auto& group = m_model->group(row);
    if (!group.groups.empty() && group.isExpanded != isExpanded)
        m_state.setGroupExpanded(group.id, isExpanded);
}

void GroupTreeView::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Palette::surface);
}
