// SPDX-License-Identifier: MIT
#include "app/ui/components/TabStops.h"

#include <QApplication>
#include <QLayout>
#include <QScrollArea>
#include <QWidget>

namespace TabStops {
namespace {

void collect(QWidget& widget, QList<QWidget*>& stops);

void collect(const QLayout& layout, QList<QWidget*>& stops) {
    for (int i = 0; i < layout.count(); ++i) {
        auto* const item = layout.itemAt(i);
        if (item->widget() != nullptr)
            collect(*item->widget(), stops);
        else if (item->layout() != nullptr)
            collect(*item->layout(), stops);
    }
}

void collect(QWidget& widget, QList<QWidget*>& stops) {
    if (widget.isWindow() || widget.focusProxy() != nullptr)
        return;
    if ((widget.focusPolicy() & Qt::TabFocus) != 0)
        stops.append(&widget);
    if (const auto* const scroll = qobject_cast<QScrollArea*>(&widget)) {
        if (scroll->widget() != nullptr)
            collect(*scroll->widget(), stops);
    } else if (widget.layout() != nullptr) {
        collect(*widget.layout(), stops);
    } else if (qobject_cast<QAbstractScrollArea*>(&widget) == nullptr) {
        for (auto* const child : widget.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            collect(*child, stops);
    }
}

bool isStop(const QWidget& widget, const QWidget& root) {
    return root.isAncestorOf(&widget) && (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isEnabled() &&
           widget.isVisible() && widget.focusProxy() == nullptr;
}

QWidget* neighbour(const QWidget& widget, bool isForward) {
    return isForward ? widget.nextInFocusChain() : widget.previousInFocusChain();
}

/// The stop after `start` in the chain, which may be `start` itself when the chain has come round.
QWidget* stopAfter(QWidget& start, const QWidget& root, bool isForward) {
    for (auto* next = neighbour(start, isForward); next != &start; next = neighbour(*next, isForward))
        if (isStop(*next, root))
            return next;
    return isStop(start, root) ? &start : nullptr;
}

}  // namespace

void orderAsRead(QWidget& root) {
    QList<QWidget*> stops;
    collect(root, stops);
    for (qsizetype i = 1; i < stops.size(); ++i)
        QWidget::setTabOrder(stops[i - 1], stops[i]);
}

QWidget* first(const QWidget& root) {
    return stopAfter(const_cast<QWidget&>(root), root, true);
}

bool move(const QWidget& root, bool isForward) {
    auto* const focus = QApplication::focusWidget();
    auto* const next = focus != nullptr && root.isAncestorOf(focus) ? stopAfter(*focus, root, isForward) : first(root);
    if (next == nullptr)
        return false;
    next->setFocus(isForward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

}  // namespace TabStops
