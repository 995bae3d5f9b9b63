// SPDX-License-Identifier: MIT
#include "app/ui/groups/GroupRowDelegate.h"

#include "app/ui/components/IconTile.h"
#include "app/ui/components/Numbers.h"
#include "app/ui/components/RowText.h"
#include "app/ui/components/ToolTip.h"
#include "app/ui/groups/GroupTreeModel.h"
#include "app/ui/rows/RowListView.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Symbol.h"
#include "app/ui/theme/Theme.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int rowHeight = 30;
constexpr int indent = 14;
constexpr int narrowestRow = 142;  // what a row takes without any indent, a few letters of the name included
constexpr int chevronSide = 18;
constexpr int chevronSymbol = 10;
constexpr int tileSide = 20;

/// Levels that would leave no room for the name share one indent.
int indentOf(int depth, int rowWidth) {
    return std::min(depth * indent, std::max(rowWidth - narrowestRow, indent));
}

QString countOf(const QModelIndex& index) {
    const auto count = index.data(GroupTreeModel::countRole);
    return count.isValid() ? Numbers::grouped(count.toLongLong()) : QString();
}

/// Where the parts of a row are, in the logical direction, and what they have room for.
struct Plan {
    Plan(const QRect& row, const QModelIndex& index, bool isSelected)
        : name(index.data().toString()),
          count(countOf(index)),
          nameFont(isSelected ? BrandFont::rowTitle() : BrandFont::bodyText()),
          chevron(GroupRowDelegate::chevronArea(row, index.data(GroupTreeModel::depthRole).toInt(), Qt::LeftToRight)),
          // Where no group folds there is no room for chevrons.
          tile((index.data(GroupTreeModel::canFoldRole).toBool() ? chevron.right() + 1 : chevron.left()) + Metric::xs,
               row.top() + (rowHeight - tileSide) / 2, tileSide, tileSide) {
        const int right = row.right() - Metric::l;
        const int countWidth = QFontMetrics(BrandFont::label()).horizontalAdvance(count) + 2;
        countArea = {right - countWidth, row.top(), countWidth, rowHeight};
        const int left = tile.right() + 1 + Metric::s;
        nameArea = {left, row.top(), countArea.left() - Metric::s - left, rowHeight};
    }

    QString name;
    QString count;
    QFont nameFont;
    QRect chevron;
    QRect tile;
    QRect countArea;
    QRect nameArea;
};

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
    const Plan plan(option.rect, index, isSelected);
    if (index.data(GroupTreeModel::hasChildrenRole).toBool()) {
        QRect area(0, 0, chevronSymbol, chevronSymbol);
        area.moveCenter(placed(plan.chevron).center());
        Symbol::paint(*painter, area,
                      index.data(GroupTreeModel::isExpandedRole).toBool() ? QStringLiteral("chevron.down")
                                                                          : QStringLiteral("chevron.right"),
                      Palette::textSoft);
    }
    IconTile::paint(*painter, placed(plan.tile), index.data(GroupTreeModel::iconRole).toLongLong());
    painter->setFont(BrandFont::label());
    painter->setPen(isSelected || isHovered ? Palette::textSoft : Palette::textMuted);
    painter->drawText(placed(plan.countArea), Qt::AlignCenter, plan.count);
    painter->setFont(plan.nameFont);
    painter->setPen(Palette::text);
    painter->drawText(placed(plan.nameArea), Qt::AlignVCenter | Qt::TextSingleLine,
                      RowText::elided(plan.name, QFontMetrics(plan.nameFont), plan.nameArea.width()));
    painter->restore();
}

QSize GroupRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {0, rowHeight};
}

bool GroupRowDelegate::helpEvent(QHelpEvent*, QAbstractItemView* view, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) {
    QString cut;
    if (index.isValid()) {
        const Plan plan(option.rect, index, view->selectionModel()->isSelected(index));
        cut = RowText::cutOnes({{plan.name, QFontMetrics(plan.nameFont), plan.nameArea.width()}});
    }
    ToolTip::show(cut, *view->viewport(), option.rect);
    return !cut.isEmpty();
}
