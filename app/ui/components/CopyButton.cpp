// SPDX-License-Identifier: MIT
#include "app/ui/components/CopyButton.h"

#include <QTimer>

#include <chrono>

namespace {

constexpr std::chrono::milliseconds confirmation{1200};

}  // namespace

CopyButton::CopyButton(const QString& field, QWidget* parent)
    : Button(QStringLiteral("Kopyala"), Variant::ghost, parent) {
    setSmall(true);
    setAccessibleDescription(field);
    confirmWhenClicked();
}

CopyButton::CopyButton(const QString& text, const QString& symbol, const QString& field, QWidget* parent)
    : Button(text, Variant::secondary, parent) {
    setSymbol(symbol);
    setAccessibleDescription(field);
    confirmWhenClicked();
}

void CopyButton::confirmWhenClicked() {
    auto* const end = new QTimer(this);
    end->setSingleShot(true);
    end->setInterval(confirmation);
    connect(end, &QTimer::timeout, this, [this] { setConfirmed(false); });
    connect(this, &CopyButton::clicked, end, [this, end] {
        setConfirmed(true);
        end->start();
    });
}
