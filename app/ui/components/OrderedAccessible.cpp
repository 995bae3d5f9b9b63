// SPDX-License-Identifier: MIT
#include "app/ui/components/OrderedAccessible.h"

#include "app/ui/components/FocusRing.h"

#include <QFocusFrame>
#include <QLayout>
#include <QMenu>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace {

/// What is read to its end before the eye goes on: a widget, or all that a layout within the layout holds.
struct Block {
    QList<QWidget*> parts;
    QRect area;  // of what shows: a hidden widget has none yet, or one of long ago
};

Block blockOf(const QList<QWidget*>& parts) {
    QRect area;
    for (const auto* part : parts)
        if (!part->isHidden())
            area |= part->geometry();
    return {parts, area};
}

/// Where a block begins and ends along one axis.
struct Extent {
    int begin;
    int end;
};

/// A handle between two panes lies a little over both, which makes them no less two.
constexpr int overlap = 2;

Extent within(int begin, int end) {
    const int slack = std::min(overlap, (end - begin) / 4);
    return {begin + slack, end - slack};
}

Extent heightOf(const Block& block) {
    return within(block.area.top(), block.area.bottom());
}

Extent widthOf(const Block& block) {
    return within(block.area.left(), block.area.right());
}

/// Parts blocks where a straight line goes between them, from the first to the last along one axis.
QList<QList<Block>> cut(QList<Block> blocks, Extent (*extentOf)(const Block&)) {
    std::stable_sort(blocks.begin(), blocks.end(),
                     [extentOf](const Block& a, const Block& b) { return extentOf(a).begin < extentOf(b).begin; });
    QList<QList<Block>> groups;
    int reached = 0;
    for (const auto& block : std::as_const(blocks)) {
        const auto [begin, end] = extentOf(block);
        if (groups.isEmpty() || begin > reached) {
            groups.append(QList<Block>());
            reached = end;
        }
        reached = std::max(reached, end);
        groups.last() += block;
    }
    return groups;
}

QList<QList<Block>> linesOf(const QList<Block>& blocks) {
    return cut(blocks, heightOf);
}

/// A block at an end that is as high as the lines beside it joins these into one line: it is one column, and they are
/// the other.
QList<QList<Block>> columnsOf(const QList<Block>& blocks, Qt::LayoutDirection direction) {
    auto columns = cut(blocks, widthOf);
    if (direction == Qt::RightToLeft)
        std::reverse(columns.begin(), columns.end());
    const auto joined = [&](qsizetype from, qsizetype to) {
        QList<Block> rest;
        for (auto column = from; column < to; ++column)
            rest += columns[column];
        return rest;
    };
    if (const auto rest = joined(0, columns.size() - 1); linesOf(rest).size() > 1)
        return {rest, columns.last()};
    if (const auto rest = joined(1, columns.size()); linesOf(rest).size() > 1)
        return {columns.first(), rest};
    return columns;
}

QList<QWidget*> inReadingOrder(const QList<Block>& blocks, Qt::LayoutDirection direction) {
    auto groups = linesOf(blocks);
    if (groups.size() == 1 && blocks.size() > 1)
        groups = columnsOf(blocks, direction);
    QList<QWidget*> ordered;
    if (groups.size() > 1)
        for (const auto& group : std::as_const(groups))
            ordered += inReadingOrder(group, direction);
    else
        for (const auto& block : linesOf(blocks).value(0))  // one, or such as overlap
            ordered += block.parts;
    return ordered;
}

/// Lines from top to bottom, or columns where no straight line parts lines, and so on in each. Hidden parts are last.
QList<QWidget*> readingOrder(QList<Block> blocks, Qt::LayoutDirection direction) {
    const auto hidden =
        std::stable_partition(blocks.begin(), blocks.end(), [](const Block& block) { return !block.area.isNull(); });
    auto ordered = inReadingOrder(QList<Block>(blocks.begin(), hidden), direction);
    for (auto block = hidden; block != blocks.end(); ++block)
        ordered += block->parts;
    return ordered;
}

/// What of `parts` a layout holds, of which it is taken away, a block an item.
QList<Block> takeBlocks(const QLayout& layout, QList<QWidget*>& parts, Qt::LayoutDirection direction) {
    QList<Block> blocks;
    for (int i = 0; i < layout.count(); ++i) {
        auto* const item = layout.itemAt(i);
        QList<QWidget*> held;
        if (item->layout())
            held = readingOrder(takeBlocks(*item->layout(), parts, direction), direction);
        else if (parts.removeOne(item->widget()))
            held += item->widget();
        if (!held.isEmpty())
            blocks += blockOf(held);
    }
    return blocks;
}

}  // namespace

int OrderedAccessible::childCount() const {
    return static_cast<int>(parts().size());
}

QAccessibleInterface* OrderedAccessible::child(int index) const {
    const auto ordered = orderedParts();
    return index >= 0 && index < ordered.size() ? QAccessible::queryAccessibleInterface(ordered[index]) : nullptr;
}

int OrderedAccessible::indexOfChild(const QAccessibleInterface* child) const {
    auto* const part = child ? qobject_cast<QWidget*>(child->object()) : nullptr;
    return part ? static_cast<int>(orderedParts().indexOf(part)) : -1;
}

/// Which widgets count is as with Qt's own, and the focus ring is as little a part as Qt's frame around a focus.
QList<QWidget*> OrderedAccessible::parts() const {
    QList<QWidget*> found;
    if (!widget())
        return found;
    for (auto* const part : widget()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        if (!part->isWindow() && !qobject_cast<QFocusFrame*>(part) && !qobject_cast<FocusRing*>(part) &&
            !qobject_cast<QMenu*>(part) && part->objectName() != QLatin1String("qt_rubberband"))
            found += part;
    return found;
}

/// The layout knows what belongs together: a title and the line below it come before the button beside the two.
QList<QWidget*> OrderedAccessible::orderedParts() const {
    auto loose = parts();
    if (loose.isEmpty())
        return loose;
    const auto direction = widget()->layoutDirection();
    auto blocks = widget()->layout() ? takeBlocks(*widget()->layout(), loose, direction) : QList<Block>();
    for (auto* const part : std::as_const(loose))
        blocks += blockOf({part});
    return readingOrder(blocks, direction);
}
