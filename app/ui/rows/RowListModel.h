// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/rows/RowChanges.h"

#include <QAbstractListModel>

#include <vector>

/// A model of rows that become others while they are shown.
class RowListModel : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    /// What a row is called, or so much of it that the first `length` letters are there.
    [[nodiscard]] virtual QString beginningOf(int row, qsizetype length) const;

protected:
    /// Turns `rows` into `after`, telling the views of what goes, comes and moves, and which of the others changed:
    /// rows are the same row by `isSame`, and look the same by `isEqual`.
    template <class Row, class IsSame, class IsEqual>
    void become(std::vector<Row>& rows, std::vector<Row> after, IsSame isSame, IsEqual isEqual);

private:
    template <class Row>
    void follow(std::vector<Row>& rows, const std::vector<Row>& after, const RowChanges& changes);
};

inline QString RowListModel::beginningOf(int row, qsizetype) const {
    return index(row).data().toString();
}

template <class Row, class IsSame, class IsEqual>
void RowListModel::become(std::vector<Row>& rows, std::vector<Row> after, IsSame isSame, IsEqual isEqual) {
    const auto changes = RowChanges::between(rows, after, isSame);
    if (!changes) {
        beginResetModel();
        rows = std::move(after);
        endResetModel();
        return;
    }
    follow(rows, after, *changes);
    const auto changed = RowChanges::runsWhere(rows, after, [&](const Row& a, const Row& b) { return !isEqual(a, b); });
    rows = std::move(after);
    for (const auto& run : changed)
        emit dataChanged(index(run.first), index(run.first + run.count - 1));
}

template <class Row>
void RowListModel::follow(std::vector<Row>& rows, const std::vector<Row>& after, const RowChanges& changes) {
    const auto place = [&rows](int row) { return rows.begin() + row; };
    for (const auto& run : changes.removed) {
        beginRemoveRows({}, run.first, run.first + run.count - 1);
        rows.erase(place(run.first), place(run.first + run.count));
        endRemoveRows();
    }
    for (const auto& run : changes.inserted) {
        beginInsertRows({}, run.first, run.first + run.count - 1);
        rows.insert(place(run.first), after.begin() + run.first, after.begin() + run.first + run.count);
        endInsertRows();
    }
    if (!changes.moved)
        return;
    const auto [from, to] = *changes.moved;
    // Qt counts the place before the row is taken out.
    beginMoveRows({}, from, from, {}, to > from ? to + 1 : to);
    const auto moved = rows[static_cast<std::size_t>(from)];
    rows.erase(place(from));
    rows.insert(place(to), moved);
    endMoveRows();
}
