// SPDX-License-Identifier: MIT
#include "app/ui/components/AdaptiveRow.h"

#include "app/ui/theme/Theme.h"

#include <QBoxLayout>

AdaptiveRow::AdaptiveRow(int narrowestRow, QWidget* parent)
    : QWidget(parent), m_parts(new QBoxLayout(QBoxLayout::LeftToRight, this)), m_narrowestRow(narrowestRow) {
    m_parts->setContentsMargins(0, 0, 0, 0);
    m_parts->setSpacing(Metric::m);
}

void AdaptiveRow::add(QWidget* part, int stretch) {
    m_parts->addWidget(part, stretch);
}

void AdaptiveRow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_parts->setDirection(width() < m_narrowestRow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}
