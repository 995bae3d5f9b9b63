// SPDX-License-Identifier: MIT
#include "app/ui/components/EyeButton.h"

EyeButton::EyeButton(QWidget* parent) : IconButton(QStringLiteral("eye"), tr("Göster"), parent) {}

void EyeButton::showRevealed(bool isRevealed) {
    setSymbol(isRevealed ? QStringLiteral("eye.slash") : QStringLiteral("eye"));
    setTip(isRevealed ? tr("Gizle") : tr("Göster"));
}
