// SPDX-License-Identifier: MIT
#include "app/ui/unlock/ShakingBanner.h"

#include "app/ui/theme/Motion.h"

#include <QLayout>
#include <QVariantAnimation>

#include <cmath>
#include <numbers>

namespace {

constexpr double reach = 6;   // points to either side
constexpr double swings = 4;  // half swings
constexpr std::chrono::milliseconds duration{350};

}  // namespace

ShakingBanner::ShakingBanner(QWidget* parent)
    : QWidget(parent), m_banner(new ErrorBanner(this)), m_motion(new QVariantAnimation(this)) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    m_motion->setStartValue(0.0);
    m_motion->setEndValue(1.0);
    m_motion->setEasingCurve(QEasingCurve::InOutQuad);
    connect(m_motion, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& phase) { place(phase.toDouble()); });
    connect(m_banner, &ErrorBanner::dismissed, this, &ShakingBanner::dismissed);
}

void ShakingBanner::setMessage(const QString& message, ErrorBanner::Kind kind) {
    m_banner->setMessage(message, kind);
    updateGeometry();
}

void ShakingBanner::shake() {
    m_motion->stop();
    m_motion->setDuration(Motion::milliseconds(duration));
    m_motion->start();
}

QSize ShakingBanner::sizeHint() const {
    return m_banner->sizeHint();
}

int ShakingBanner::heightForWidth(int width) const {
    return m_banner->layout()->totalHeightForWidth(width);
}

void ShakingBanner::resizeEvent(QResizeEvent*) {
    m_banner->resize(size());
    place(0);
}

void ShakingBanner::place(double phase) {
    m_banner->move(qRound(reach * std::sin(phase * std::numbers::pi * swings)), 0);
}
