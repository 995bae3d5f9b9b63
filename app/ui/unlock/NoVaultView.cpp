// SPDX-License-Identifier: MIT
#include "app/ui/unlock/NoVaultView.h"

#include "app/ui/components/BareLayout.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/EmptyStateView.h"
#include "app/ui/theme/Theme.h"
#include "app/ui/unlock/ShakingBanner.h"

NoVaultView::NoVaultView(ShakingBanner* banner, int spacing, QWidget* parent) : QWidget(parent) {
    auto* const open = new Button(QStringLiteral("Veritabanı aç…"), Button::Variant::primary);
    auto* const create = new Button(QStringLiteral("Yeni kasa…"));
    connect(open, &Button::clicked, this, &NoVaultView::openWanted);
    connect(create, &Button::clicked, this, &NoVaultView::createWanted);

    auto* const buttons = new QWidget;
    auto* const row = bareRow(buttons, Metric::s);
    row->addWidget(open);
    row->addWidget(create);
    auto* const invitation =
        new EmptyStateView(QStringLiteral("lock.doc"), QStringLiteral("Henüz bir kasa yok"),
                           QStringLiteral("Var olan bir .kdbx dosyasını aç ya da sıfırdan yeni bir kasa oluştur."));
    invitation->addBelow(buttons);
    auto* const column = bareColumn(this, spacing);
    column->addWidget(invitation);
    column->addWidget(banner);
}
