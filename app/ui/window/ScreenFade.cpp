// SPDX-License-Identifier: MIT
#include "app/ui/window/ScreenFade.h"

#include "app/ui/theme/Motion.h"
#include "app/ui/theme/Theme.h"
#include "core/primitives/Bytes.h"

#include <QEvent>
#include <QPainter>
#include <QVariantAnimation>

namespace {

constexpr std::chrono::milliseconds duration{200};

/// A picture of an open vault is as secret as the vault.
void wipe(QImage& picture) {
    if (!picture.isNull())
        secureWipe(picture.bits(), static_cast<std::size_t>(picture.sizeInBytes()));
    picture = {};
}

}  // namespace

ScreenFade::ScreenFade(QWidget* parent) : QWidget(parent), m_motion(new QVariantAnimation(this)) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    parent->installEventFilter(this);
    m_motion->setStartValue(1.0);
    m_motion->setEndValue(0.0);
    m_motion->setEasingCurve(Motion::curve);
    connect(m_motion, &QVariantAnimation::valueChanged, this, [this] { update(); });
    connect(m_motion, &QVariantAnimation::finished, this, &ScreenFade::end);
}

ScreenFade::~ScreenFade() {
    wipe(m_picture);
}

QImage ScreenFade::pictureOf(QWidget& screen) {
    if (Motion::isReduced() || !screen.isVisible())
        return {};
    const double ratio = screen.devicePixelRatioF();
    QImage picture(screen.size() * ratio, QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Palette::canvas);
    screen.render(&picture, {}, {}, QWidget::DrawChildren);
    return picture;
}

void ScreenFade::start(QImage picture) {
    wipe(m_picture);
    m_picture = std::move(picture);
    if (Motion::isReduced())
        return end();
    setGeometry(parentWidget()->rect());
    raise();
    show();
    m_motion->stop();
    m_motion->setDuration(static_cast<int>(duration.count()));
    m_motion->start();
}

void ScreenFade::end() {
    m_motion->stop();
    hide();
    wipe(m_picture);
}

void ScreenFade::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setOpacity(m_motion->currentValue().toDouble());
    // The window keeps its middle while it takes its new size, and so does the picture.
    const QSize size = m_picture.deviceIndependentSize().toSize();
    const QRect area(QPoint((width() - size.width()) / 2, (height() - size.height()) / 2), size);
    painter.drawImage(area.topLeft(), m_picture);
    painter.setClipRegion(QRegion(rect()) - area);
    painter.fillRect(rect(), Palette::canvas);
}

bool ScreenFade::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}
