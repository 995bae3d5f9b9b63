// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessibleWidget>
#include <QHash>
#include <QPersistentModelIndex>

class RowListView;

/// A row list as a screen reader meets it. Its rows are its children, made when they are asked for, and can be chosen
/// as a table's can; each offers by name what else can be done with it. Qt's own list would offer nothing, would
/// report a focus wherever a row is the current one, and knows no row that unfolds.
class RowListAccessible final : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit RowListAccessible(RowListView& list);
    ~RowListAccessible() override;

    void* interface_cast(QAccessible::InterfaceType kind) override;
    [[nodiscard]] QAccessibleInterface* focusChild() const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
    [[nodiscard]] QAccessibleInterface* child(int row) const override;
    [[nodiscard]] int childCount() const override { return rowCount(); }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QAccessible::State state() const override;

    [[nodiscard]] QAccessibleInterface* caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* summary() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* cellAt(int row, int column) const override;
    [[nodiscard]] int selectedCellCount() const override { return selectedRowCount(); }
    [[nodiscard]] QList<QAccessibleInterface*> selectedCells() const override;
    [[nodiscard]] QString columnDescription(int) const override { return {}; }
    [[nodiscard]] QString rowDescription(int) const override { return {}; }
    [[nodiscard]] int selectedColumnCount() const override { return 0; }
    [[nodiscard]] int selectedRowCount() const override;
    [[nodiscard]] int columnCount() const override { return 1; }
    [[nodiscard]] int rowCount() const override;
    [[nodiscard]] QList<int> selectedColumns() const override { return {}; }
    [[nodiscard]] QList<int> selectedRows() const override;
    [[nodiscard]] bool isColumnSelected(int) const override { return false; }
    [[nodiscard]] bool isRowSelected(int row) const override;
    bool selectRow(int row) override;
    bool selectColumn(int) override { return false; }
    bool unselectRow(int row) override;
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent* event) override;

private:
    void forgetGoneRows() const;

    RowListView& m_list;
    mutable QHash<QPersistentModelIndex, QAccessible::Id> m_rows;  // those that were asked for
    mutable bool m_haveRowsGone = false;
};
