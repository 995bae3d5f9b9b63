// SPDX-License-Identifier: MIT
#include "app/ui/settings/PermissionRow.h"

#include "app/ui/components/Button.h"
#include "app/ui/components/Labels.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Symbol.h"
#include "app/ui/theme/Theme.h"

#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>

namespace {

constexpr int symbolSide = 20;
constexpr int padding = 12;
constexpr int rowPadding = 9;  // above and below
constexpr double groundOpacity = 0.1;

}  // namespace

PermissionRow::PermissionRow(QWidget* parent)
    : QWidget(parent),
      m_title(new TextLabel({}, BrandFont::rowTitle(), Palette::text)),
      m_subtitle(new Paragraph({}, BrandFont::body(11), Palette::textSoft)),
      m_ask(new Button(QStringLiteral("İzin ver…"))) {
    m_ask->setSmall(true);
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(m_title);
    texts->addWidget(m_subtitle);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(2 * padding + symbolSide, rowPadding, padding, rowPadding);
    row->setSpacing(Metric::m);
    row->addLayout(texts, 1);
    row->addWidget(m_ask);
    connect(m_ask, &Button::clicked, this, &PermissionRow::permissionWanted);
    showGranted(false, Asking::impossible);
}

void PermissionRow::showGranted(bool isGranted, Asking asking) {
    m_isGranted = isGranted;
    m_title->setText(isGranted ? QStringLiteral("Erişilebilirlik izni verildi")
                               : QStringLiteral("Erişilebilirlik izni gerekli"));
    m_subtitle->setText(isGranted ? QStringLiteral("Otomatik yazma kullanılabilir.")
                                  : QStringLiteral("İzin olmadan tuş vuruşları gönderilemez."));
    m_ask->setVisible(!isGranted && asking == Asking::possible);
    update();
}

QColor PermissionRow::colour() const {
    return m_isGranted ? Palette::success : Palette::warn;
}

void PermissionRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::roundedBox(painter, rect(), Radius::control, Palette::withOpacity(colour(), groundOpacity));
    const QRect symbol = QStyle::visualRect(layoutDirection(), rect(),
                                            QRect(padding, (height() - symbolSide) / 2, symbolSide, symbolSide));
    Symbol::paint(painter, symbol,
                  m_isGranted ? QStringLiteral("checkmark.shield.fill") : QStringLiteral("exclamationmark.shield.fill"),
                  colour());
}
