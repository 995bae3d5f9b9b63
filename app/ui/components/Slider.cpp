// SPDX-License-Identifier: MIT
#include "app/ui/components/Slider.h"

#include "app/ui/Theme.h"
#include "app/ui/components/Painting.h"

#include <QAbstractScrollArea>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>

namespace {

constexpr int trackHeight = 4;
constexpr int knobSide = 16;

bool standsInPageThatScrolls(const QWidget& widget) {
    for (const auto* around = widget.parentWidget(); around != nullptr; around = around->parentWidget())
        if (const auto* area = qobject_cast<const QAbstractScrollArea*>(around))
            return area->verticalScrollBar()->maximum() > area->verticalScrollBar()->minimum();
    return false;
}

}  // namespace

Slider::Slider(const QString& name, int minimum, int maximum, QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    setAccessibleName(name);
    setRange(minimum, maximum);
    setSingleStep(1);
    setPageStep(std::max(1, (maximum - minimum) / 10));
    setFocusPolicy(Qt::StrongFocus);
}

QSize Slider::sizeHint() const {
    return {200, knobSide + Metric::xs};
}

/// How far the value is along the way, 0 to 1, in the direction of writing.
double Slider::position() const {
    const double share = maximum() == minimum() ? 0 : double(value() - minimum()) / (maximum() - minimum());
    return layoutDirection() == Qt::RightToLeft ? 1 - share : share;
}

void Slider::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(0.4);
    const double middle = height() / 2.0;
    const double travel = width() - knobSide;
    const double knob = travel * position();
    const QRectF track(0, middle - trackHeight / 2.0, width(), trackHeight);
    Painting::roundedBox(painter, track, Radius::pill, Palette::line);
    QRectF filled = track;
    if (layoutDirection() == Qt::RightToLeft)
        filled.setLeft(knob + knobSide / 2.0);
    else
        filled.setRight(knob + knobSide / 2.0);
    Painting::roundedBox(painter, filled, Radius::pill, Palette::accent);
    Painting::roundedBox(painter, QRectF(knob, middle - knobSide / 2.0, knobSide, knobSide), Radius::pill,
                         isSliderDown() ? Palette::accentHover : Palette::text, Palette::canvas);
}

void Slider::goTo(double x) {
    const int travel = width() - knobSide;
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    setValue(QStyle::sliderValueFromPosition(minimum(), maximum(), qRound(x - knobSide / 2.0), travel, isMirrored));
}

void Slider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    setSliderDown(true);
    goTo(event->position().x());
}

void Slider::mouseMoveEvent(QMouseEvent* event) {
    if (isSliderDown())
        goTo(event->position().x());
}

void Slider::mouseReleaseEvent(QMouseEvent*) {
    setSliderDown(false);
    update();
}

void Slider::wheelEvent(QWheelEvent* event) {
    if (!hasFocus() && standsInPageThatScrolls(*this))
        event->ignore();
    else
        QSlider::wheelEvent(event);
}
