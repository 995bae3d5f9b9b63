// SPDX-License-Identifier: MIT
#include "app/ui/components/SymbolMark.h"

#include "app/ui/theme/Symbol.h"

#include <QPainter>

SymbolMark::SymbolMark(QString name, const QColor& colour, int side, QWidget* parent)
    : QWidget(parent), m_name(std::move(name)), m_colour(colour) {
    setFixedSize(side, side);
}

void SymbolMark::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Symbol::paint(painter, rect(), m_name, m_colour);
}
