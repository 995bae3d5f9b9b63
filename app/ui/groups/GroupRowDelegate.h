// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

/// Paints a row of the group column: chevron, tile, name and count, indented by depth.
class GroupRowDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// Shows the whole of a name that is cut off.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

    /// Where the chevron of a row is, and can be hit.
    [[nodiscard]] static QRect chevronArea(const QRect& row, int depth, Qt::LayoutDirection direction);
};
