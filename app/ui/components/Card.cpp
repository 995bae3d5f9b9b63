// SPDX-License-Identifier: MIT
#include "app/ui/components/Card.h"

#include "app/ui/components/Accessible.h"
#include "app/ui/components/Labels.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QPainter>
#include <QVBoxLayout>

Card::Card(QWidget* parent) : QWidget(parent), m_content(new QVBoxLayout(this)) {
    m_content->setContentsMargins(Metric::l, Metric::l, Metric::l, Metric::l);
    m_content->setSpacing(Metric::m);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
}

Card::Card(const QString& heading, QWidget* parent) : Card(parent) {
    Accessible::setRole(*this, QAccessible::Grouping);
    setAccessibleName(heading);
    m_headingLine = new QHBoxLayout;
    m_headingLine->setSpacing(Metric::s);
    m_headingLine->addWidget(new TextLabel(heading, BrandFont::sectionTitle(), Palette::text, this), 1);
    m_content->addLayout(m_headingLine);
}

void Card::addDivider() {
    auto* const place = new QWidget(this);
    place->setFixedHeight(Metric::hairline);
    m_dividers.append(place);
    m_content->addWidget(place);
}

void Card::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::roundedBox(painter, rect(), Radius::card, Palette::surface, Palette::line);
    for (const auto* place : m_dividers)
        if (place->isVisibleTo(this))
            Painting::hairline(painter, QPointF(0, place->y()), width(), Qt::Horizontal, Palette::line);
}

HairlineDivider::HairlineDivider(Qt::Orientation orientation, QWidget* parent) : QWidget(parent) {
    if (orientation == Qt::Horizontal)
        setFixedHeight(Metric::hairline);
    else
        setFixedWidth(Metric::hairline);
}

void HairlineDivider::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Palette::line);
}
