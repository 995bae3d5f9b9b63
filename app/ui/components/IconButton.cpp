// SPDX-License-Identifier: MIT
#include "app/ui/components/IconButton.h"

#include "app/ui/components/KeyNames.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Symbol.h"
#include "app/ui/theme/Theme.h"

#include <QMenu>
#include <QPainter>

namespace {

constexpr double disabledOpacity = 0.4;

}  // namespace

IconButton::IconButton(const QString& symbol, const QString& tip, QWidget* parent)
    : QAbstractButton(parent), m_symbol(symbol), m_tint(Palette::textSoft), m_side(Metric::controlHeight) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setTip(tip);
}

void IconButton::setSymbol(const QString& name) {
    m_symbol = name;
    update();
}

void IconButton::setTip(const QString& tip) {
    setToolTip(tip);
    const auto text = tip.toStdString();
    const auto names = KeyNames::ofSigns(text);
    m_keyNames = QString::fromStdString(names);
    const auto heard = QString::fromStdString(KeyNames::withoutSigns(text, names));
    setAccessibleName(heard);
    if (heard != tip)
        setAccessibleDescription(heard);  // or the tooltip would be heard for it
}

void IconButton::setTint(const QColor& colour) {
    m_tint = colour;
    update();
}

void IconButton::setSides(int button, int symbol) {
    m_side = button;
    m_symbolSide = symbol;
    updateGeometry();
}

void IconButton::setFramed(bool isFramed) {
    m_isFramed = isFramed;
    update();
}

void IconButton::setOnHoverGround(bool isOnHoverGround) {
    m_isOnHoverGround = isOnHoverGround;
    update();
}

void IconButton::setMenu(QMenu* menu) {
    connect(menu, &QMenu::triggered, menu, &QMenu::close);  // a screen reader chooses without closing it
    connect(this, &IconButton::clicked, menu, [this, menu] {
        // Under the button from its left edge, and inside the window where that has the room.
        const int beyond = mapTo(window(), QPoint(menu->sizeHint().width(), 0)).x() - window()->width();
        menu->popup(mapToGlobal(QPoint(-std::max(0, beyond + Metric::m), height() + Metric::xs)));
    });
}

void IconButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(disabledOpacity);
    const bool isHovered = underMouse() && isEnabled();
    QColor ground = m_isFramed ? Palette::hover : QColor();
    if (isHovered)
        ground = m_isFramed ? Palette::hover.lighter(118) : (m_isOnHoverGround ? Palette::lineStrong : Palette::hover);
    if (isDown())
        ground = m_isOnHoverGround ? Palette::canvas : Palette::line;
    const QColor outline = m_isFramed ? Palette::lineStrong : QColor();
    Painting::roundedBox(painter, rect(), m_side > Metric::controlHeightSmall ? Radius::control : Radius::small, ground,
                         outline);
    const bool isQuiet = m_tint == Palette::textSoft;
    Symbol::paint(painter,
                  QRectF((width() - m_symbolSide) / 2.0, (height() - m_symbolSide) / 2.0, m_symbolSide, m_symbolSide),
                  m_symbol, isHovered && isQuiet ? Palette::text : m_tint);
}
