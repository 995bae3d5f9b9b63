// SPDX-License-Identifier: MIT
#include "app/ui/components/EyeButton.h"

EyeButton::EyeButton(QWidget* parent) : IconButton(QStringLiteral("eye"), QStringLiteral("Göster"), parent) {}

void EyeButton::showRevealed(bool isRevealed) {
    setSymbol(isRevealed ? QStringLiteral("eye.slash") : QStringLiteral("eye"));
    setTip(isRevealed ? QStringLiteral("Gizle") : QStringLiteral("Göster"));
}
