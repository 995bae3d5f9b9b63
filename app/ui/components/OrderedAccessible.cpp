// SPDX-License-Identifier: MIT
#include "app/ui/components/OrderedAccessible.h"

#include <QFocusFrame>
#include <QLayout>
#include <QMenu>
#include <QWidget>

#include <algorithm>

namespace {

void collect(const QLayout& layout, QList<QWidget*>& found) {
    for (int i = 0; i < layout.count(); ++i) {
        auto* const item = layout.itemAt(i);
        if (item->widget() != nullptr)
            found += item->widget();
        else if (item->layout() != nullptr)
            collect(*item->layout(), found);
    }
}

/// By where they stand: line by line.
void sortByPlace(QList<QWidget*>& parts, Qt::LayoutDirection direction) {
    std::stable_sort(parts.begin(), parts.end(), [](const QWidget* a, const QWidget* b) { return a->y() < b->y(); });
    const auto isBefore = [direction](const QWidget* a, const QWidget* b) {
        return direction == Qt::RightToLeft ? a->geometry().right() > b->geometry().right() : a->x() < b->x();
    };
    // A line is as high as what it begins with; what has its middle in it belongs to it.
    for (auto line = parts.begin(); line != parts.end();) {
        const int bottom = (*line)->geometry().bottom();
        const auto isBelow = [bottom](const QWidget* part) { return part->geometry().center().y() > bottom; };
        const auto end = std::find_if(std::next(line), parts.end(), isBelow);
        std::stable_sort(line, end, isBefore);
        line = end;
    }
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

/// Which widgets count is as with Qt's own.
QList<QWidget*> OrderedAccessible::parts() const {
    QList<QWidget*> found;
    if (!widget())
        return found;
    for (auto* const part : widget()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        if (!part->isWindow() && !qobject_cast<QFocusFrame*>(part) && !qobject_cast<QMenu*>(part) &&
            part->objectName() != QLatin1String("qt_rubberband"))
            found += part;
    return found;
}

/// As the layout has them, which knows what stands together; what is in none comes behind.
QList<QWidget*> OrderedAccessible::orderedParts() const {
    auto others = parts();
    if (others.isEmpty())
        return others;
    QList<QWidget*> laidOut;
    if (widget()->layout() != nullptr)
        collect(*widget()->layout(), laidOut);
    laidOut.removeIf([&](QWidget* part) { return !others.removeOne(part); });
    sortByPlace(others, widget()->layoutDirection());
    return laidOut + others;
}
