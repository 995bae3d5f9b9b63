// SPDX-License-Identifier: MIT
#include "app/ui/components/FlowLayout.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace {

QSize sizeOf(const QLayoutItem& item, int widest) {
    return item.sizeHint().boundedTo(QSize(std::max(widest, 1), QLAYOUTSIZE_MAX));
}

}  // namespace

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
    int height = 0;
    for (const auto& line : lines(width))
        height += line.height + (height > 0 ? spacing() : 0);
    return height;
}

void FlowLayout::setGeometry(const QRect& area) {
    QLayout::setGeometry(area);
    int top = area.top();
    for (const auto& line : lines(area.width())) {
        place(line, QRect(area.left(), top, area.width(), line.height));
        top += line.height + spacing();
    }
}

QSize FlowLayout::minimumSize() const {
    QSize size;
    for (const auto* item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

QList<FlowLayout::Line> FlowLayout::lines(int width) const {
    QList<Line> lines;
    for (auto* const item : m_items) {
        const QSize size = sizeOf(*item, width);
        if (lines.isEmpty() || lines.last().width + spacing() + size.width() > width)
            lines.append(Line{});
        auto& line = lines.last();
        line.width += size.width() + (line.items.isEmpty() ? 0 : spacing());
        line.height = std::max(line.height, size.height());
        line.items.append(item);
    }
    return lines;
}

void FlowLayout::place(const Line& line, const QRect& area) const {
    const auto direction = parentWidget() != nullptr ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    int left = area.left();
    for (auto* const item : line.items) {
        const QSize size = sizeOf(*item, area.width());
        const QPoint corner(left, area.top() + (line.height - size.height()) / 2);
        item->setGeometry(QStyle::visualRect(direction, area, QRect(corner, size)));
        left += size.width() + spacing();
    }
}
