// SPDX-License-Identifier: MIT
#include "app/ui/components/ErrorBanner.h"

#include "app/ui/components/Accessible.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/Labels.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Symbol.h"
#include "app/ui/theme/Theme.h"

#include <QHBoxLayout>
#include <QPainter>

namespace {

constexpr int symbolSide = 14;

}  // namespace

ErrorBanner::ErrorBanner(QWidget* parent)
    : QWidget(parent), m_message(new Paragraph({}, BrandFont::body(12, QFont::Medium), Palette::text, this)) {
    Accessible::setRole(*this, QAccessible::Notification);
    auto* const dismiss = new IconButton(QStringLiteral("xmark"), QStringLiteral("Kapat"), this);
    dismiss->setSides(Metric::controlHeightSmall, 10);
    connect(dismiss, &IconButton::clicked, this, &ErrorBanner::dismissed);

    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(Metric::m + symbolSide + Metric::s, Metric::s, Metric::s, Metric::s);
    line->setSpacing(Metric::s);
    line->addWidget(m_message, 1);
    line->addWidget(dismiss, 0, Qt::AlignTop);
}

void ErrorBanner::setMessage(const QString& message, Kind kind) {
    m_kind = kind;
    update();
    m_message->setText(message);
    setAccessibleName(message);
    Accessible::announce(*this);
}

void ErrorBanner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const bool isFailure = m_kind == Kind::failure;
    const QColor tint = isFailure ? Palette::danger : Palette::info;
    Painting::roundedBox(painter, rect(), Radius::control, Palette::withOpacity(tint, 0.12),
                         Palette::withOpacity(tint, 0.35));
    const int left = layoutDirection() == Qt::RightToLeft ? width() - Metric::m - symbolSide : Metric::m;
    Symbol::paint(painter, QRectF(left, (height() - symbolSide) / 2.0, symbolSide, symbolSide),
                  isFailure ? QStringLiteral("exclamationmark.triangle.fill") : QStringLiteral("info.circle.fill"),
                  tint);
}
