// SPDX-License-Identifier: MIT
#include "app/ui/components/FlowLayout.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>

FlowLayout::FlowLayout(int spacing, QWidget* parent) : QLayout(parent) {
    setContentsMargins(0, 0, 0, 0);
    setSpacing(spacing);
}

FlowLayout::~FlowLayout() {
    qDeleteAll(m_items);
}

QLayoutItem* FlowLayout::takeAt(int index) {
    return index >= 0 && index < m_items.size() ? m_items.takeAt(index) : nullptr;
}

int FlowLayout::heightForWidth(int width) const {
    return run(QRect(0, 0, width, 0), Pass::measure);
}

void FlowLayout::setGeometry(const QRect& area) {
    QLayout::setGeometry(area);
    run(area, Pass::place);
}

QSize FlowLayout::minimumSize() const {
    QSize size;
    for (const auto* item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

/// The height that the items take in the width of `area`.
int FlowLayout::run(const QRect& area, Pass pass) const {
    const auto direction = parentWidget() != nullptr ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    int left = area.left();
    int top = area.top();
    int lineHeight = 0;
    for (auto* item : m_items) {
        const QSize size = item->sizeHint().boundedTo(QSize(std::max(area.width(), 1), QLAYOUTSIZE_MAX));
        if (left + size.width() > area.left() + area.width() && lineHeight > 0) {
            left = area.left();
            top += lineHeight + spacing();
            lineHeight = 0;
        }
        if (pass == Pass::place)
            item->setGeometry(QStyle::visualRect(direction, area, QRect(QPoint(left, top), size)));
        left += size.width() + spacing();
        lineHeight = std::max(lineHeight, size.height());
    }
    return top + lineHeight - area.top();
}
