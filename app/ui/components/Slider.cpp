// SPDX-License-Identifier: MIT
#include "app/ui/components/Slider.h"

#include "app/ui/components/FocusRing.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

namespace {

constexpr int trackHeight = 4;
constexpr int knobSide = 16;

/// Whether a focus that comes so is the user's choice of this control.
bool isChoice(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::MouseFocusReason ||
           reason == Qt::ShortcutFocusReason;
}

/// Whether the focus comes or goes with the window's, without another control being chosen.
bool isOfWindow(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
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

QRectF Slider::knob() const {
    return {(width() - knobSide) * position(), (height() - knobSide) / 2.0, double(knobSide), double(knobSide)};
}

/// The knob is what the keys move: a box around the whole track would be taken for a field.
void Slider::showFocusAtKnob() {
    FocusRing::setArea(this, knob().toRect(), knobSide / 2);
}

void Slider::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(0.4);
    const QRectF knob = this->knob();
    const QRectF track(0, (height() - trackHeight) / 2.0, width(), trackHeight);
    Painting::roundedBox(painter, track, Radius::pill, Palette::line);
    QRectF filled = track;
    if (layoutDirection() == Qt::RightToLeft)
        filled.setLeft(knob.center().x());
    else
        filled.setRight(knob.center().x());
    Painting::roundedBox(painter, filled, Radius::pill, Palette::accent);
    Painting::roundedBox(painter, knob, Radius::pill, isSliderDown() ? Palette::accentHover : Palette::text,
                         Palette::canvas);
}

void Slider::goTo(double x) {
    const int travel = width() - knobSide;
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    setValue(QStyle::sliderValueFromPosition(minimum(), maximum(), qRound(x - knobSide / 2.0), travel, isMirrored));
}

void Slider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    m_isChosen = true;  // also where it had the focus before
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
    if (hasFocus() && m_isChosen)
        QSlider::wheelEvent(event);
    else
        event->ignore();
}

void Slider::focusInEvent(QFocusEvent* event) {
    m_isChosen = m_isChosen || isChoice(event->reason());
    QSlider::focusInEvent(event);
}

void Slider::focusOutEvent(QFocusEvent* event) {
    m_isChosen = m_isChosen && isOfWindow(event->reason());
    QSlider::focusOutEvent(event);
}

void Slider::resizeEvent(QResizeEvent* event) {
    QSlider::resizeEvent(event);
    showFocusAtKnob();
}

void Slider::changeEvent(QEvent* event) {
    QSlider::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        showFocusAtKnob();
}

void Slider::sliderChange(SliderChange change) {
    QSlider::sliderChange(change);
    showFocusAtKnob();
}
