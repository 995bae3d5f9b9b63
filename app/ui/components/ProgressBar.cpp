// SPDX-License-Identifier: MIT
#include "app/ui/components/ProgressBar.h"

#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QPainter>

namespace {

constexpr int trackHeight = 6;
constexpr int usualWidth = 200;

}  // namespace

ProgressBar::ProgressBar(const QString& name, QWidget* parent) : QProgressBar(parent) {
    setAccessibleName(name);
    setRange(0, 100);
    setValue(0);
    setTextVisible(false);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize ProgressBar::sizeHint() const {
    return {usualWidth, trackHeight};
}

QSize ProgressBar::minimumSizeHint() const {
    return {0, trackHeight};
}

void ProgressBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRectF track(rect());
    Painting::roundedBox(painter, track, Radius::pill, Palette::line);
    const double share = double(value() - minimum()) / std::max(1, maximum() - minimum());
    if (share <= 0)
        return;
    QRectF filled = track;
    filled.setWidth(std::max(track.height(), track.width() * share));  // no narrower than its own roundness
    if (layoutDirection() == Qt::RightToLeft)
        filled.moveRight(track.right());
    Painting::roundedBox(painter, filled, Radius::pill, Palette::accent);
}
