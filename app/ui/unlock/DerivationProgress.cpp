// SPDX-License-Identifier: MIT
#include "app/ui/unlock/DerivationProgress.h"

#include "app/state/AppState.h"
#include "app/ui/components/BareLayout.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/ProgressBar.h"
#include "app/ui/components/RepeatedLook.h"
#include "app/ui/theme/Theme.h"

#include <QHBoxLayout>

namespace {

using namespace std::chrono_literals;

constexpr auto refreshInterval = 100ms;

}  // namespace

DerivationProgress::DerivationProgress(AppState& state, QWidget* parent)
    : QWidget(parent),
      m_state(state),
      m_text(new TextLabel(QStringLiteral("Anahtar türetiliyor…"), BrandFont::secondary(), Palette::text)),
      m_percent(new TextLabel({}, BrandFont::secondary(), Palette::textSoft)),
      m_bar(new ProgressBar(QStringLiteral("Anahtar türetiliyor"))),
      m_giveUp(new Button(QStringLiteral("Vazgeç"))) {
    arrange();
    new RepeatedLook(this, refreshInterval, [this] { showFraction(); });
    connect(m_giveUp, &Button::clicked, this, [this] { m_state.giveUpDerivation(); });
}

void DerivationProgress::arrange() {
    m_percent->setTabularFigures(true);
    m_percent->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    auto* const texts = new QHBoxLayout;
    texts->setSpacing(Metric::s);
    texts->addWidget(m_text, 1);
    texts->addWidget(m_percent);
    auto* const column = new QVBoxLayout;
    column->setSpacing(Metric::s);
    column->addStretch();
    column->addLayout(texts);
    column->addWidget(m_bar);
    column->addStretch();
    auto* const row = bareRow(this, Metric::l);
    row->addLayout(column, 1);
    row->addWidget(m_giveUp, 0, Qt::AlignVCenter);
}

QWidget* DerivationProgress::firstStop() const {
    return m_bar;
}

void DerivationProgress::setLarge(bool isLarge) {
    m_giveUp->setLarge(isLarge);
}

void DerivationProgress::showFraction() {
    const int percent = static_cast<int>(m_state.derivationFraction() * 100);
    m_bar->setValue(percent);
    m_percent->setText(QStringLiteral("%%1").arg(percent));
}
