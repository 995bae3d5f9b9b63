// SPDX-License-Identifier: MIT
#include "app/ui/components/Popover.h"

#include "app/ui/components/Accessible.h"
#include "app/ui/components/TabStops.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int gap = 6;           // between the control and the panel
constexpr int windowMargin = 8;  // least distance of the panel from the window's edges
constexpr int shadowWidth = 20;
constexpr int shadowDrop = 4;

}  // namespace

Popover::Popover(const QString& name, QWidget* anchor)
    : QWidget(anchor->window()), m_anchor(anchor), m_panel(new QWidget(this)), m_content(new QVBoxLayout(m_panel)) {
    hide();
    Accessible::setRole(*m_panel, QAccessible::Dialog);
    m_panel->setAccessibleName(name);
    m_content->setContentsMargins(Metric::m, Metric::m, Metric::m, Metric::m);
    m_content->setSpacing(Metric::s);
    m_anchor->installEventFilter(this);
    window()->installEventFilter(this);
    connect(anchor, &QObject::destroyed, this, &QObject::deleteLater);
}

void Popover::open(QWidget* first) {
    place();
    raise();
    show();
    TabStops::orderAsRead(*m_panel);
    first->setFocus(Qt::PopupFocusReason);
}

void Popover::close() {
    if (isHidden())
        return;
    hide();
    if (m_anchor && m_anchor->isVisible())
        m_anchor->setFocus(Qt::PopupFocusReason);
    emit closed();
}

void Popover::setFrame(QWidget* frame) {
    m_frame = frame;
}

void Popover::place() {
    const QRect room = window()->rect().marginsRemoved({windowMargin, windowMargin, windowMargin, windowMargin});
    setGeometry(window()->rect());
    m_panel->resize(m_panel->sizeHint());
    const auto* const control = m_frame ? m_frame.data() : m_anchor.data();
    const QRect anchor(control->mapTo(window(), QPoint()), control->size());
    const QSize size = m_panel->size();
    const bool isAtEnd = m_frame != nullptr;
    const bool isAlignedLeft = isAtEnd == (layoutDirection() == Qt::RightToLeft);
    QPoint corner(isAlignedLeft ? anchor.left() : anchor.right() + 1 - size.width(), anchor.bottom() + 1 + gap);
    if (corner.y() + size.height() > room.bottom() + 1)
        corner.setY(anchor.top() - gap - size.height());
    if (corner.y() < room.top())
        corner = {isAlignedLeft ? anchor.right() + 1 + gap : anchor.left() - gap - size.width(), anchor.top()};
    const QPoint last = room.bottomRight() + QPoint(1, 1) - QPoint(size.width(), size.height());
    m_panel->move(std::clamp(corner.x(), room.left(), std::max(room.left(), last.x())),
                  std::clamp(corner.y(), room.top(), std::max(room.top(), last.y())));
}

void Popover::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRectF panel = m_panel->geometry();
    Painting::shadow(painter, panel, Radius::card, shadowWidth, shadowDrop);
    Painting::roundedBox(painter, panel, Radius::card, Palette::elevated, Palette::lineStrong);
}

void Popover::mousePressEvent(QMouseEvent* event) {
    if (!m_panel->geometry().contains(event->pos()))
        close();
}

void Popover::keyPressEvent(QKeyEvent* event) {
    // Nothing goes on to the sheet below, which would take Escape and Return for its own.
    if (event->key() == Qt::Key_Escape)
        close();
}

bool Popover::focusNextPrevChild(bool next) {
    return TabStops::move(*m_panel, next);
}

bool Popover::eventFilter(QObject* watched, QEvent* event) {
    if (isVisible() && watched == m_anchor && event->type() == QEvent::Hide)
        close();
    else if (isVisible() && watched == window() && event->type() == QEvent::Resize)
        place();
    return false;
}
