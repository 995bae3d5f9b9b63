// SPDX-License-Identifier: MIT
#include "app/ui/window/RescueBanner.h"

#include "app/state/AppState.h"
#include "app/ui/components/Accessible.h"
#include "app/ui/components/BrandDate.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/SymbolMark.h"
#include "app/ui/components/Texts.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace {

constexpr int symbolSide = 16;

}  // namespace

RescueBanner::RescueBanner(AppState& state, QWidget* parent)
    : QWidget(parent),
      m_state(state),
      m_message(new Paragraph({}, BrandFont::body(12, QFont::Medium), Palette::text, this)),
      m_detail(new Paragraph({}, BrandFont::body(11), Palette::textSoft, this)),
      m_restore(new Button(QStringLiteral("Geri getir"))),
      m_delete(new Button(QStringLiteral("Sil"), Button::Variant::ghost)) {
    Accessible::setRole(*this, QAccessible::Notification);
    arrange();
    connectState();
    showOffer();
}

void RescueBanner::arrange() {
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(m_message);
    texts->addWidget(m_detail);

    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(Metric::m + Metric::l, Metric::m + Metric::m, Metric::m + Metric::m,
                             Metric::m + Metric::m);
    line->setSpacing(Metric::s);
    line->addWidget(new SymbolMark(QStringLiteral("clock.arrow.circlepath"), Palette::warn, symbolSide));
    line->addSpacing(Metric::xs);
    line->addLayout(texts, 1);
    line->addSpacing(Metric::s);
    line->addWidget(m_restore);
    line->addWidget(m_delete);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
}

void RescueBanner::connectState() {
    connect(&m_state, &AppState::rescueOfferChanged, this, &RescueBanner::showOffer);
    connect(&m_state, &AppState::isLockedChanged, this, &RescueBanner::showOffer);
    connect(m_restore, &Button::clicked, &m_state, &AppState::restoreRescue);
    connect(m_delete, &Button::clicked, &m_state, &AppState::deleteRescue);
}

void RescueBanner::showOffer() {
    const auto offer = m_state.rescueOffer();
    const bool hadFocus = hasFocusWithin();
    setVisible(offer.has_value());
    if (!offer) {
        if (hadFocus)
            emit decided();
        return;
    }
    const auto message = QStringLiteral("Bu kasanın %1 tarihli, kaydedilmemiş değişiklikleri saklandı.")
                             .arg(brandFormatted(offer->kept));
    const auto detail = offer->failure
                            ? QStringLiteral("Geri getirilemedi: %1").arg(qtText(*offer->failure))
                            : QStringLiteral("Geri getirirsen kasa o andaki hâline döner; bu adımı geri alabilirsin.");
    m_message->setText(message);
    m_detail->setText(detail);
    const auto spoken = message + QLatin1Char(' ') + detail;
    if (spoken == accessibleName())
        return;
    setAccessibleName(spoken);
    Accessible::announce(*this);
}

bool RescueBanner::hasFocusWithin() const {
    return m_restore->hasFocus() || m_delete->hasFocus();
}

void RescueBanner::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    for (auto* const button : {m_restore, m_delete})
        if (isReturn && button->hasFocus())
            return button->click();
    QWidget::keyPressEvent(event);
}

void RescueBanner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const auto card = rect().adjusted(Metric::m, Metric::m, -Metric::m, -Metric::m);
    Painting::hairline(painter, QPointF(0, height() - Metric::hairline), width(), Qt::Horizontal, Palette::line);
    Painting::roundedBox(painter, card, Radius::card, Palette::surface, Palette::line);
}
