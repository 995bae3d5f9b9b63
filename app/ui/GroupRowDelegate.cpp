// SPDX-License-Identifier: MIT
#include "app/ui/GroupRowDelegate.h"

#include "app/ui/GroupTreeModel.h"
#include "app/ui/RowListView.h"
#include "app/ui/RowText.h"
#include "app/ui/Symbol.h"
#include "app/ui/Theme.h"
#include "app/ui/components/IconTile.h"
#include "app/ui/components/Painting.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int rowHeight = 30;
constexpr int indent = 14;
constexpr int narrowestRow = 142;  // what a row takes without any indent, a few letters of the name included
constexpr int chevronSide = 18;
constexpr int chevronSymbol = 10;
constexpr int tileSide = 20;

/// Levels that would leave no room for the name stand beneath each other.
int indentOf(int depth, int rowWidth) {
    return std::min(depth * indent, std::max(rowWidth - narrowestRow, indent));
}

}  // namespace

QRect GroupRowDelegate::chevronArea(const QRect& row, int depth, Qt::LayoutDirection direction) {
    const int left = row.left() + Metric::s + Metric::xs + indentOf(depth, row.width());
    return QStyle::visualRect(direction, row,
                              {left, row.top() + (rowHeight - chevronSide) / 2, chevronSide, chevronSide});
}

void GroupRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    painter->save();
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const bool isHovered = option.state.testFlag(QStyle::State_MouseOver);
    Painting::roundedBox(*painter, option.rect.adjusted(Metric::s, 0, -Metric::s, 0), Radius::control,
                         isSelected ? Palette::selection() : (isHovered ? Palette::hover : QColor()),
                         RowListView::showsFocus(option) ? Palette::accent : QColor());

    const auto placed = [&](const QRect& area) { return QStyle::visualRect(option.direction, option.rect, area); };
    const QRect chevron = chevronArea(option.rect, index.data(GroupTreeModel::depthRole).toInt(), Qt::LeftToRight);
    if (index.data(GroupTreeModel::hasChildrenRole).toBool()) {
        QRect area(0, 0, chevronSymbol, chevronSymbol);
        area.moveCenter(placed(chevron).center());
        Symbol::paint(*painter, area,
                      index.data(GroupTreeModel::isExpandedRole).toBool() ? QStringLiteral("chevron.down")
                                                                          : QStringLiteral("chevron.right"),
                      Palette::textSoft);
    }
    // Where no group folds there is no room for chevrons.
    const bool canFold = index.data(GroupTreeModel::canFoldRole).toBool();
    const QRect tile((canFold ? chevron.right() + 1 : chevron.left()) + Metric::xs,
                     option.rect.top() + (rowHeight - tileSide) / 2, tileSide, tileSide);
    IconTile::paint(*painter, placed(tile), index.data(GroupTreeModel::iconRole).toLongLong());

    const QString count = index.data(GroupTreeModel::countRole).toString();
    const QFontMetrics countMetrics(BrandFont::label());
    const int right = option.rect.right() - Metric::l;
    const int countWidth = countMetrics.horizontalAdvance(count) + 2;
    painter->setFont(BrandFont::label());
    painter->setPen(isSelected || isHovered ? Palette::textSoft : Palette::textMuted);
    painter->drawText(placed({right - countWidth, option.rect.top(), countWidth, rowHeight}), Qt::AlignCenter, count);

    const QFont font = isSelected ? BrandFont::rowTitle() : BrandFont::bodyText();
    const int left = tile.right() + 1 + Metric::s;
    const QRect name(left, option.rect.top(), right - countWidth - Metric::s - left, rowHeight);
    painter->setFont(font);
    painter->setPen(Palette::text);
    painter->drawText(placed(name), Qt::AlignVCenter | Qt::TextSingleLine,
                      RowText::elided(index.data().toString(), QFontMetrics(font), name.width()));
    painter->restore();
}

QSize GroupRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {0, rowHeight};
}
