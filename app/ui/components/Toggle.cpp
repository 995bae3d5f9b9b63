// SPDX-License-Identifier: MIT
#include "app/ui/components/Toggle.h"

#include "app/ui/components/FocusRing.h"
#include "app/ui/theme/Motion.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QPainter>
#include <QStyle>
#include <QVariantAnimation>

namespace {

constexpr QSize track(34, 20);
constexpr int knobInset = 3;
constexpr int exampleSize = 12;
constexpr int exampleGap = 6;
const QString separator = QStringLiteral("  ");

}  // namespace

Toggle::Toggle(const QString& text, QWidget* parent) : QCheckBox(text, parent), m_motion(new QVariantAnimation(this)) {
    setFont(BrandFont::bodyText());
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_motion->setEasingCurve(Motion::curve);
    connect(m_motion, &QVariantAnimation::valueChanged, this, [this](const QVariant& position) {
        m_position = position.toDouble();
        update();
    });
    connect(this, &Toggle::toggled, this, &Toggle::slide);
}

void Toggle::setSide(Side side) {
    m_side = side;
    FocusRing::setArea(this, switchArea(), track.height() / 2);
    update();
}

QRect Toggle::switchArea() const {
    const int left = m_side == Side::leading ? 0 : width() - track.width();
    return QStyle::visualRect(layoutDirection(), rect(), {{left, (height() - track.height()) / 2}, track});
}

void Toggle::slide(bool isOn) {
    m_motion->stop();
    if (!isVisible() || Motion::isReduced()) {
        m_position = isOn ? 1 : 0;
        update();
        return;
    }
    m_motion->setDuration(Motion::milliseconds());
    m_motion->setStartValue(m_position);
    m_motion->setEndValue(isOn ? 1.0 : 0.0);
    m_motion->start();
}

QString Toggle::words() const {
    return text().section(separator, 0, 0);
}

QString Toggle::example() const {
    return text().section(separator, 1);
}

QSize Toggle::sizeHint() const {
    int width = fontMetrics().horizontalAdvance(words());
    if (!example().isEmpty())
        width += exampleGap + QFontMetrics(BrandFont::mono(exampleSize)).horizontalAdvance(example());
    return {width + Metric::m + track.width(), Metric::controlHeightSmall};
}

QSize Toggle::minimumSizeHint() const {
    return {60 + Metric::m + track.width(), Metric::controlHeightSmall};
}

void Toggle::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(0.4);
    const int rest = width() - track.width() - Metric::m;
    const int wordsLeft = m_side == Side::leading ? width() - rest : 0;
    paintText(painter, QStyle::visualRect(layoutDirection(), rect(), QRect(wordsLeft, 0, rest, height())));

    const QRect box = switchArea();
    Painting::roundedBox(painter, box, Radius::pill,
                         underMouse() ? Palette::lineStrong.lighter(112) : Palette::lineStrong);
    if (m_position > 0) {
        painter.save();
        painter.setOpacity(painter.opacity() * m_position);
        Painting::roundedBox(painter, box, Radius::pill, Palette::accent);
        painter.restore();
    }
    const double knob = box.height() - 2.0 * knobInset;
    const double travel = box.width() - 2.0 * knobInset - knob;
    const double offset = layoutDirection() == Qt::RightToLeft ? 1 - m_position : m_position;
    Painting::roundedBox(painter, QRectF(box.left() + knobInset + travel * offset, box.top() + knobInset, knob, knob),
                         Radius::pill, isChecked() ? Palette::canvas : Palette::text);
}

void Toggle::paintText(QPainter& painter, const QRect& room) const {
    painter.setFont(font());
    painter.setPen(Palette::text);
    const QString shown = fontMetrics().elidedText(words(), Qt::ElideRight, room.width());
    const auto line = QStyle::visualAlignment(layoutDirection(), Qt::Alignment(Qt::AlignVCenter | Qt::AlignLeading));
    painter.drawText(room, static_cast<int>(line) | Qt::TextSingleLine, shown);

    const QFont mono = BrandFont::mono(exampleSize);
    const int from = fontMetrics().horizontalAdvance(shown) + exampleGap;
    const int left = room.width() - from;
    if (example().isEmpty() || left <= 0)
        return;
    painter.setFont(mono);
    painter.setPen(Palette::textSoft);
    painter.drawText(
        QStyle::visualRect(layoutDirection(), room, QRect(room.left() + from, room.top(), left, room.height())),
        static_cast<int>(line) | Qt::TextSingleLine, QFontMetrics(mono).elidedText(example(), Qt::ElideRight, left));
}

void Toggle::resizeEvent(QResizeEvent* event) {
    QCheckBox::resizeEvent(event);
    FocusRing::setArea(this, switchArea(), track.height() / 2);
}
