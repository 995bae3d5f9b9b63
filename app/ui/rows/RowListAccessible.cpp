// SPDX-License-Identifier: MIT
#include "app/ui/rows/RowListAccessible.h"

#include "app/ui/rows/RowListView.h"

#include <algorithm>

namespace {

class RowAccessible final : public QAccessibleInterface,
                            public QAccessibleTableCellInterface,
                            public QAccessibleActionInterface {
public:
    RowAccessible(RowListView& list, const QModelIndex& index) : m_list(&list), m_index(index) {}

    void* interface_cast(QAccessible::InterfaceType kind) override {
        if (kind == QAccessible::TableCellInterface)
            return static_cast<QAccessibleTableCellInterface*>(this);
        return kind == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }
    [[nodiscard]] bool isValid() const override { return m_list && m_index.isValid(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(m_list);
    }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::State state() const override;

    [[nodiscard]] bool isSelected() const override {
        return isValid() && m_list->selectionModel()->isSelected(m_index);
    }
    [[nodiscard]] QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
    [[nodiscard]] QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    [[nodiscard]] int columnIndex() const override { return 0; }
    [[nodiscard]] int rowIndex() const override { return m_index.row(); }
    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QAccessibleInterface* table() const override { return parent(); }

    [[nodiscard]] QStringList actionNames() const override;
    [[nodiscard]] QString localizedActionName(const QString& name) const override;
    void doAction(const QString& name) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QPointer<RowListView> m_list;
    QPersistentModelIndex m_index;
};

QString RowAccessible::text(QAccessible::Text kind) const {
    if (kind == QAccessible::Name)
        return m_index.data(Qt::AccessibleTextRole).toString();
    return kind == QAccessible::Description ? m_index.data(Qt::AccessibleDescriptionRole).toString() : QString();
}

QRect RowAccessible::rect() const {
    if (!isValid())
        return {};
    const QRect row = m_list->visualRect(m_index);
    return {m_list->viewport()->mapToGlobal(row.topLeft()), row.size()};
}

QAccessible::State RowAccessible::state() const {
    QAccessible::State state;
    state.invalid = !isValid();
    if (state.invalid)
        return state;
    const auto* const list = m_list.data();
    state.invisible = !list->isVisible() || !list->viewport()->rect().intersects(list->visualRect(m_index));
    state.disabled = !list->isEnabled();
    state.selectable = true;
    state.selected = isSelected();
    state.multiSelectable = list->selectionMode() == QAbstractItemView::ExtendedSelection;
    state.focusable = true;
    state.focused = list->hasFocus() && list->currentIndex() == m_index;
    if (const auto isExpanded = list->isExpanded(m_index)) {
        state.expandable = true;
        state.expanded = *isExpanded;
        state.collapsed = !*isExpanded;
    }
    return state;
}

/// First what a click does, then what is particular to the row, then its menu, which has all of that and more.
QStringList RowAccessible::actionNames() const {
    if (!isValid() || !m_list->isEnabled())
        return {};
    QStringList names{pressAction()};
    for (const auto& verb : m_list->verbs(m_index))
        names += verb.name;
    return names << showMenuAction();
}

QString RowAccessible::localizedActionName(const QString& name) const {
    const bool isQts = name == pressAction() || name == showMenuAction();
    return isQts ? QAccessibleActionInterface::localizedActionName(name) : name;
}

void RowAccessible::doAction(const QString& name) {
    if (!isValid() || !m_list->isEnabled())
        return;
    if (name == pressAction())
        return m_list->setCurrentIndex(m_index);
    if (name == showMenuAction())
        return m_list->requestMenu(m_index);
    for (const auto& verb : m_list->verbs(m_index))
        if (verb.name == name)
            return verb.act();
}

}  // namespace

RowListAccessible::RowListAccessible(RowListView& list) : QAccessibleWidget(&list, QAccessible::List), m_list(list) {}

RowListAccessible::~RowListAccessible() {
    for (const auto row : std::as_const(m_rows))
        QAccessible::deleteAccessibleInterface(row);
}

void* RowListAccessible::interface_cast(QAccessible::InterfaceType kind) {
    if (kind == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface*>(this);
    return QAccessibleWidget::interface_cast(kind);
}

QAccessible::State RowListAccessible::state() const {
    auto state = QAccessibleWidget::state();
    state.multiSelectable = m_list.selectionMode() == QAbstractItemView::ExtendedSelection;
    return state;
}

QAccessibleInterface* RowListAccessible::focusChild() const {
    return m_list.hasFocus() && m_list.currentIndex().isValid() ? child(m_list.currentIndex().row()) : nullptr;
}

QAccessibleInterface* RowListAccessible::childAt(int x, int y) const {
    const auto index = m_list.indexAt(m_list.viewport()->mapFromGlobal(QPoint(x, y)));
    return index.isValid() ? child(index.row()) : nullptr;
}

QAccessibleInterface* RowListAccessible::child(int row) const {
    if (row < 0 || row >= rowCount())
        return nullptr;
    forgetGoneRows();
    const QPersistentModelIndex index = m_list.model()->index(row, 0);
    if (const auto known = m_rows.constFind(index); known != m_rows.constEnd())
        return QAccessible::accessibleInterface(*known);
    auto* const made = new RowAccessible(m_list, index);
    m_rows.insert(index, QAccessible::registerAccessibleInterface(made));
    return made;
}

int RowListAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* const row = dynamic_cast<const RowAccessible*>(child);
    return row && row->table() == this ? row->rowIndex() : -1;
}

QAccessibleInterface* RowListAccessible::cellAt(int row, int column) const {
    return column == 0 ? child(row) : nullptr;
}

int RowListAccessible::rowCount() const {
    return m_list.model()->rowCount();
}

int RowListAccessible::selectedRowCount() const {
    int count = 0;
    for (const auto& range : m_list.selectionModel()->selection())
        count += range.height();
    return count;
}

QList<int> RowListAccessible::selectedRows() const {
    QList<int> rows;
    for (const auto& range : m_list.selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows += row;
    std::sort(rows.begin(), rows.end());
    return rows;
}

QList<QAccessibleInterface*> RowListAccessible::selectedCells() const {
    QList<QAccessibleInterface*> cells;
    for (const int row : selectedRows())
        cells += child(row);
    return cells;
}

bool RowListAccessible::isRowSelected(int row) const {
    return m_list.selectionModel()->isRowSelected(row);
}

bool RowListAccessible::selectRow(int row) {
    const auto index = m_list.model()->index(row, 0);
    if (!index.isValid())
        return false;
    const bool isOne = m_list.selectionMode() == QAbstractItemView::SingleSelection;
    m_list.selectionModel()->select(index, isOne ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::Select);
    return true;
}

bool RowListAccessible::unselectRow(int row) {
    const auto index = m_list.model()->index(row, 0);
    if (!index.isValid())
        return false;
    m_list.selectionModel()->select(index, QItemSelectionModel::Deselect);
    return true;
}

void RowListAccessible::modelChange(QAccessibleTableModelChangeEvent* event) {
    using Event = QAccessibleTableModelChangeEvent;
    m_haveRowsGone |= event->modelChangeType() == Event::ModelReset || event->modelChangeType() == Event::RowsRemoved;
}

/// Only when a row is asked for: a model may announce many that go, one after the other.
void RowListAccessible::forgetGoneRows() const {
    if (!std::exchange(m_haveRowsGone, false))
        return;
    for (auto row = m_rows.begin(); row != m_rows.end();) {
        if (row.key().isValid()) {
            ++row;
            continue;
        }
        QAccessible::deleteAccessibleInterface(row.value());
        row = m_rows.erase(row);
    }
}
