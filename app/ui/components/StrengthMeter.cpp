// SPDX-License-Identifier: MIT
#include "app/ui/components/StrengthMeter.h"

#include "app/ui/components/Accessible.h"
#include "app/ui/components/Announcement.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/Numbers.h"
#include "app/ui/components/Texts.h"
#include "app/ui/theme/Motion.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"
#include "core/generator/PasswordGenerator.h"
#include "core/model/SecureString.h"
#include "core/text/Text.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>
#include <QVariantAnimation>

#include <cmath>

namespace {

using namespace std::chrono_literals;

constexpr int barHeight = 6;
constexpr auto barMotion = 200ms;

struct Grade {
    QString label;
    QColor colour;
};

Grade gradeOf(int score) {
    if (score < 25)
        return {QStringLiteral("Çok zayıf"), Palette::danger};
    if (score < 50)
        return {QStringLiteral("Zayıf"), Palette::warn};
    if (score < 75)
        return {QStringLiteral("İyi"), Palette::info};
    if (score < 90)
        return {QStringLiteral("Güçlü"), Palette::success};
    return {QStringLiteral("Çok güçlü"), Palette::success};
}

}  // namespace

StrengthMeter::StrengthMeter(QWidget* parent)
    : QWidget(parent),
      m_motion(new QVariantAnimation(this)),
      m_label(new TextLabel({}, BrandFont::body(11, QFont::DemiBold), Palette::text, this)),
      m_entropy(new TextLabel({}, BrandFont::label(), Palette::textSoft, this)),
      m_count(new TextLabel({}, BrandFont::label(), Palette::textSoft, this)),
      m_spoken(new Announcement(this)),
      m_colour(Palette::danger) {
    Accessible::setRole(*this, QAccessible::Grouping);
    m_motion->setEasingCurve(Motion::curve);
    connect(m_motion, &QVariantAnimation::valueChanged, this, [this](const QVariant& filled) {
        m_filled = filled.toDouble();
        update();
    });
    auto* const texts = new QHBoxLayout;
    texts->setSpacing(Metric::m);
    texts->addWidget(m_label);
    texts->addWidget(m_entropy);
    texts->addStretch();
    texts->addWidget(m_count);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, barHeight + Metric::s - 2, 0, 0);
    column->addLayout(texts);
}

void StrengthMeter::showStrengthOf(const QString& password) {
    auto text = vaultText(password);
    const auto strength = PasswordGenerator::strength(text);
    const auto count = Text::characterCount(text);
    wipe(text);

    const auto grade = gradeOf(strength.score);
    m_colour = grade.colour;
    m_label->setText(grade.label);
    const bool isJudged = count > 0;  // no warning before the first key
    m_label->setColour(isJudged ? grade.colour : Palette::textSoft);
    m_spoken->say(isJudged ? m_label->text() : QString());  // and not the figures, which change with every letter
    m_entropy->setText(QStringLiteral("%1 bit entropi").arg(static_cast<qint64>(std::round(strength.entropyBits))));
    m_count->setText(QStringLiteral("%1 karakter").arg(Numbers::grouped(count)));
    setAccessibleName(QStringLiteral("%1, %2, %3").arg(m_label->text(), m_entropy->text(), m_count->text()));

    m_motion->stop();
    m_motion->setDuration(Motion::milliseconds(barMotion));
    m_motion->setStartValue(m_filled);
    m_motion->setEndValue(strength.score / 100.0);
    m_motion->start();
    update();
}

void StrengthMeter::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRectF bar(0, 0, width(), barHeight);
    Painting::roundedBox(painter, bar, Radius::pill, Palette::line);
    if (m_filled <= 0)
        return;
    const double length = std::max<double>(barHeight, bar.width() * m_filled);
    const double left = layoutDirection() == Qt::RightToLeft ? bar.width() - length : 0;
    Painting::roundedBox(painter, QRectF(left, 0, length, barHeight), Radius::pill, m_colour);
}
