// SPDX-License-Identifier: MIT
#include "app/ui/groups/GroupTreeView.h"

#include "app/state/AppState.h"
#include "app/ui/commands/CommandButton.h"
#include "app/ui/components/BareLayout.h"
#include "app/ui/components/Card.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/IconTile.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/SectionHeader.h"
#include "app/ui/components/Texts.h"
#include "app/ui/groups/GroupRowDelegate.h"
#include "app/ui/groups/GroupRowMenu.h"
#include "app/ui/groups/GroupTreeModel.h"
#include "app/ui/rows/EntryDrag.h"
#include "app/ui/rows/GroupDrag.h"
#include "app/ui/rows/RowDropTarget.h"
#include "app/ui/rows/RowListView.h"
#include "app/ui/theme/Theme.h"

#include <QDrag>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QScopedValueRollback>

namespace {

constexpr int headerHeight = SectionHeader::sectionHeight - Metric::hairline;  // its line goes on in the next column's
constexpr int markSide = 20;
constexpr int nameSize = 14;

}  // namespace

GroupTreeView::GroupTreeView(AppState& state, QWidget* parent)
    : QWidget(parent),
      m_state(state),
      m_model(new GroupTreeModel(this)),
      m_name(new TextLabel({}, BrandFont::body(nameSize, QFont::DemiBold), Palette::text)),
      m_add(makeCommandButton(Command::ID::newGroup)),
      m_list(new RowListView(QStringLiteral("Gruplar"))) {
    arrange();
    connectList();
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
    row->addWidget(m_add);
    return header;
}

void GroupTreeView::arrange() {
    m_list->setModel(m_model);
    m_list->setItemDelegate(new GroupRowDelegate(m_list));
    m_list->setDragEnabled(true);
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);

    auto* const column = bareColumn(this, 0);
    column->addWidget(makeHeader());
    column->addWidget(new HairlineDivider);
    column->addWidget(m_list, 1);
}

void GroupTreeView::connectList() {
    connect(m_add, &IconButton::clicked, this, [this] { Command::of(Command::ID::newGroup)(m_state); });
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, &GroupTreeView::storeSelection);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &GroupTreeView::followSelection);
    connect(m_list, &RowListView::clicked, this, &GroupTreeView::choose);
    m_list->setVerbs([this](const QModelIndex& index) { return verbsOf(index); });
    m_list->setExpansion([](const QModelIndex& index) {
        return index.data(GroupTreeModel::hasChildrenRole).toBool()
                   ? std::optional(index.data(GroupTreeModel::isExpandedRole).toBool())
                   : std::nullopt;
    });
    connect(m_list, &RowListView::menuRequested, this, &GroupTreeView::openMenu);
    connect(m_list, &RowListView::dragStarted, this, &GroupTreeView::drag);
    new RowDropTarget(
        *m_list,
        {.placeAt = [this](const QPoint& position) { return dropPlaceAt(position); },
         .drop = [this](const std::set<UUID>& ids, const RowMark& place) { takeDrop(ids, place); },
         .groupPlaceAt = [this](const QPoint& position, const UUID& id) { return groupDropPlaceAt(position, id); },
         .dropGroup = [this](const UUID& id,
                             const RowMark& place) { m_state.moveGroupTo(id, m_model->group(place.row).id); },
         .rest = [this](const RowMark& place) { setExpanded(place.row, true); }});
}

void GroupTreeView::connectState() {
    connect(&m_state, &AppState::databaseChanged, this, &GroupTreeView::showGroups);
    connect(&m_state, &AppState::databaseURLChanged, this, &GroupTreeView::showGroups);
    connect(&m_state, &AppState::selectedGroupIDChanged, this, &GroupTreeView::showSelection);
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
    if (!m_isShowing)
        choose(m_list->currentIndex());
}

// A screen reader selects a row without going to it.
void GroupTreeView::followSelection() {
    const auto selected = m_list->selectionModel()->selectedIndexes();
    if (!m_isShowing && selected.size() == 1 && selected.first() != m_list->currentIndex())
        m_list->setCurrentIndex(selected.first());
}

/// Also of the group that is selected already: a click on it still empties the selection of entries.
void GroupTreeView::choose(const QModelIndex& index) {
    if (!index.isValid())
        return;
    m_state.setSelectedGroupID(m_model->group(index.row()).id);
    m_state.setSelectedEntryIDs({});
}

void GroupTreeView::openMenu(const QModelIndex& index, const QPoint& globalPosition) {
    const auto id = m_model->group(index.row()).id;
    auto* const menu =
        GroupRowMenu::make(m_state, m_model->group(index.row()), this, [this, id] { emit moveWanted(id); });
    menu->setAccessibleName(index.data(Qt::AccessibleTextRole).toString());
    m_list->setMark(RowMark{index.row(), RowMark::Shape::outline});
    connect(menu, &QMenu::aboutToHide, m_list, [this] { m_list->setMark(std::nullopt); });
    menu->popup(globalPosition);
}

bool GroupTreeView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list && event->type() == QEvent::KeyPress && answerKey(static_cast<const QKeyEvent&>(*event)))
        return true;
    if (watched == m_list->viewport() &&
        (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)) {
        const auto& click = static_cast<const QMouseEvent&>(*event);
        if (click.button() == Qt::LeftButton && answerClick(click.position().toPoint()))
            return true;
    }
    return QWidget::eventFilter(watched, event);
}

/// The arrow keys along the line of writing lead into a group and out of it.
bool GroupTreeView::answerKey(const QKeyEvent& event) {
    const auto current = m_list->currentIndex();
    if (!current.isValid() || (event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return false;
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    if (event.key() == (isMirrored ? Qt::Key_Left : Qt::Key_Right))
        goIn(current.row());
    else if (event.key() == (isMirrored ? Qt::Key_Right : Qt::Key_Left))
        goOut(current.row());
    else
        return false;
    return true;
}

void GroupTreeView::goIn(int row) {
    const auto& group = m_model->group(row);
    if (group.groups.empty())
        return;
    if (group.isExpanded)
        m_list->setCurrentIndex(m_model->index(row + 1));
    else
        setExpanded(row, true);
}

void GroupTreeView::goOut(int row) {
    const auto& group = m_model->group(row);
    if (!group.groups.empty() && group.isExpanded)
        setExpanded(row, false);
    else if (const auto parent = m_model->parentOf(row))
        m_list->setCurrentIndex(m_model->index(*parent));
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
    if (group.groups.empty() || group.isExpanded == isExpanded)
        return;
    m_state.setGroupExpanded(group.id, isExpanded);
    m_list->tellExpansion(row);
}

/// What the chevron does.
QList<RowVerb> GroupTreeView::verbsOf(const QModelIndex& index) {
    const auto isExpanded = m_list->isExpanded(index);
    if (!isExpanded)
        return {};
    return {{GroupRowMenu::expansionVerb(*isExpanded),
             [this, index, isExpanded] { setExpanded(index.row(), !*isExpanded); }}};
}

void GroupTreeView::drag(const QModelIndex& index) {
    const auto& group = m_model->group(index.row());
    auto* const drag = new QDrag(m_list);
    drag->setMimeData(GroupDrag::contentOf(group.id).release());
    drag->setPixmap(EntryDrag::picture(index.data().toString(), group.iconID, 1, devicePixelRatioF()));
    drag->setHotSpot({Metric::l, Metric::l});
    m_list->forgetPointer();
    drag->exec(Qt::MoveAction);
}

/// A row that takes the group; the one that holds it already would only put it last.
std::optional<RowMark> GroupTreeView::groupDropPlaceAt(const QPoint& position, const UUID& groupID) const {
    const auto place = dropPlaceAt(position);
    return place && m_state.canMoveGroup(groupID, m_model->group(place->row).id) ? place : std::nullopt;
}

std::optional<RowMark> GroupTreeView::dropPlaceAt(const QPoint& position) const {
    const auto index = m_list->indexAt(position);
    return index.isValid() ? std::optional(RowMark{index.row(), RowMark::Shape::ground}) : std::nullopt;
}

void GroupTreeView::takeDrop(const std::set<UUID>& ids, const RowMark& place) {
    m_state.moveEntriesTo(ids, m_model->group(place.row).id);
}

void GroupTreeView::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Palette::surface);
}
