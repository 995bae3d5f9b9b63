// SPDX-License-Identifier: MIT
#include "app/ui/components/OrderedAccessible.h"

#include <QFocusFrame>
#include <QMenu>
#include <QWidget>

#include <algorithm>

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

QList<QWidget*> OrderedAccessible::orderedParts() const {
    auto ordered = parts();
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const QWidget* a, const QWidget* b) { return a->y() < b->y(); });
    const bool isMirrored = widget() && widget()->layoutDirection() == Qt::RightToLeft;
    const auto isBefore = [isMirrored](const QWidget* a, const QWidget* b) {
        return isMirrored ? a->geometry().right() > b->geometry().right() : a->x() < b->x();
    };
    // A line is as high as what it begins with; what has its middle in it belongs to it.
    for (auto line = ordered.begin(); line != ordered.end();) {
        const int bottom = (*line)->geometry().bottom();
        const auto end = std::find_if(std::next(line), ordered.end(),
                                      [bottom](const QWidget* part) { return part->geometry().center().y() > bottom; });
        std::stable_sort(line, end, isBefore);
        line = end;
    }
    return ordered;
}
