// SPDX-License-Identifier: MIT
#include "app/ui/components/FocusRing.h"

#include "app/ui/components/Button.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/SelectableSecretText.h"
#include "app/ui/components/TextField.h"
#include "app/ui/theme/Theme.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTextEdit>

namespace {

constexpr int ringWidth = 3;
constexpr double ringOpacity = 0.22;

constexpr const char* ringArea = "focusRingArea";
constexpr const char* ringRadius = "focusRingRadius";

/// What the ring goes around, in the widget's own coordinates.
QRect areaOf(const QWidget& widget) {
    const auto area = widget.property(ringArea);
    return area.isValid() ? area.toRect() : widget.rect();
}

bool isField(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) != nullptr ||
           qobject_cast<const QPlainTextEdit*>(widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(widget) != nullptr;
}

bool isControl(const QWidget* widget) {
    return qobject_cast<const QAbstractButton*>(widget) != nullptr ||
           qobject_cast<const SelectableSecretText*>(widget) != nullptr ||
           qobject_cast<const QComboBox*>(widget) != nullptr ||
           qobject_cast<const QAbstractSlider*>(widget) != nullptr ||
           qobject_cast<const QProgressBar*>(widget) != nullptr ||
           qobject_cast<const QTextEdit*>(widget) != nullptr;  // a text to read and select from
}

/// Where the ring is drawn: the nearest widget around the control that does not cut it off, within its window and what
/// scrolls.
QWidget* hostOf(const QWidget& target) {
    QWidget* host = target.parentWidget();
    const auto fits = [&] {
        const QRect ring = areaOf(target).adjusted(-ringWidth, -ringWidth, ringWidth, ringWidth);
        return host->rect().contains(QRect(target.mapTo(host, ring.topLeft()), ring.size()));
    };
    const auto isScrolled = [&] { return qobject_cast<QAbstractScrollArea*>(host->parentWidget()) != nullptr; };
    while (!host->isWindow() && !isScrolled() && !fits())
        host = host->parentWidget();
    return host;
}

bool isAround(const QObject* object, const QWidget* target) {
    const auto* widget = qobject_cast<const QWidget*>(object);
    return widget != nullptr && (widget == target || widget->isAncestorOf(target));
}

bool isNavigation(const QEvent& event) {
    if (event.type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<const QKeyEvent&>(event).key();
    return key == Qt::Key_Tab || key == Qt::Key_Backtab || (key >= Qt::Key_Left && key <= Qt::Key_Down);
}

}  // namespace

void FocusRing::install(QObject* owner) {
    auto* const ring = new FocusRing;
    connect(owner, &QObject::destroyed, ring, &QObject::deleteLater);
    connect(qApp, &QApplication::focusChanged, ring, [ring](QWidget*, QWidget* widget) { ring->follow(widget); });
    qApp->installEventFilter(ring);
}

void FocusRing::setArea(QWidget* widget, const QRect& area, int radius) {
    widget->setProperty(ringArea, area);
    widget->setProperty(ringRadius, radius);
}

FocusRing::FocusRing() {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void FocusRing::follow(QWidget* widget) {
    const bool isWanted = widget != nullptr && (isField(widget) || (isControl(widget) && m_isKeyboardUsed));
    m_target = isWanted ? widget : nullptr;
    place();
}

void FocusRing::place() {
    if (!m_target || !m_target->isVisible() || m_target->parentWidget() == nullptr) {
        hide();
        setParent(nullptr);
        return;
    }
    QWidget* const host = hostOf(*m_target);
    if (parentWidget() != host)
        setParent(host);
    const QRect area = areaOf(*m_target);
    setGeometry(QRect(m_target->mapTo(host, area.topLeft()), area.size())
                    .adjusted(-ringWidth, -ringWidth, ringWidth, ringWidth));
    raise();
    show();
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event) {
    if (isNavigation(*event) && !m_isKeyboardUsed) {
        m_isKeyboardUsed = true;
        follow(QApplication::focusWidget());
    } else if (event->type() == QEvent::MouseButtonPress) {
        m_isKeyboardUsed = false;
    }
    switch (event->type()) {
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::Show:
        case QEvent::Hide:
        case QEvent::ParentChange:
        case QEvent::DynamicPropertyChange:  // of the area
            if (m_target && isAround(watched, m_target))
                place();
            break;
        default:
            break;
    }
    return false;
}

void FocusRing::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Palette::withOpacity(Palette::accent, ringOpacity), ringWidth));
    const double inset = ringWidth / 2.0;
    const QRectF edge = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    const auto given = m_target ? m_target->property(ringRadius) : QVariant();
    const int usual = height() < Metric::controlHeight ? Radius::small : Radius::control;
    const double radius = (given.isValid() ? given.toInt() : usual) + inset;
    painter.drawRoundedRect(edge, radius, radius);
    if (m_target && !isField(m_target)) {
        painter.setPen(QPen(Palette::accent, 1));
        painter.drawRoundedRect(edge.adjusted(1, 1, -1, -1), radius - 1, radius - 1);
    }
}
