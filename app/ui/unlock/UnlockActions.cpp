// SPDX-License-Identifier: MIT
#include "app/ui/unlock/UnlockActions.h"

#include "app/ui/components/BareLayout.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/theme/Theme.h"
#include "app/ui/unlock/DerivationProgress.h"

namespace {

constexpr int rowHeight = 38;
constexpr int symbolSide = 16;

}  // namespace

UnlockActions::UnlockActions(AppState& state, QWidget* parent)
    : QWidget(parent),
      m_submit(new Button({}, Button::Variant::primary)),
      m_buttons(makeButtons()),
      m_progress(new DerivationProgress(state)) {
    m_progress->setLarge(true);
    m_progress->hide();
    setFixedHeight(rowHeight);
    auto* const column = bareColumn(this, 0);
    column->addWidget(m_buttons);
    column->addWidget(m_progress);
    setCreating(false);
}

QWidget* UnlockActions::makeButtons() {
    m_submit->setLarge(true);
    m_submit->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(m_submit, &Button::clicked, this, &UnlockActions::submitWanted);
    auto* const buttons = new QWidget;
    auto* const row = bareRow(buttons, Metric::s);
    row->addWidget(m_submit, 1);
    const auto addFramed = [&](const QString& symbol, const QString& tip, void (UnlockActions::*wanted)()) {
        auto* const button = new IconButton(symbol, tip);
        button->setFramed(true);
        button->setSides(rowHeight, symbolSide);
        connect(button, &IconButton::clicked, this, wanted);
        row->addWidget(button);
    };
    addFramed(QStringLiteral("folder"), QStringLiteral("Başka bir veritabanı aç"), &UnlockActions::openWanted);
    addFramed(QStringLiteral("doc.badge.plus"), QStringLiteral("Yeni veritabanı oluştur"),
              &UnlockActions::createWanted);
    return buttons;
}

void UnlockActions::setCreating(bool isCreating) {
    m_submit->setText(isCreating ? QStringLiteral("Kasayı oluştur") : QStringLiteral("Kilidi aç"));
    m_submit->setSymbol(isCreating ? QStringLiteral("lock.fill") : QStringLiteral("lock.open.fill"));
}

void UnlockActions::setSubmitEnabled(bool isEnabled) {
    m_submit->setEnabled(isEnabled);
}

void UnlockActions::setDeriving(bool isDeriving) {
    m_buttons->setVisible(!isDeriving);
    m_progress->setVisible(isDeriving);
    if (isDeriving)
        m_progress->firstStop()->setFocus();
}

bool UnlockActions::isDeriving() const {
    return m_progress->isVisibleTo(this);
}
