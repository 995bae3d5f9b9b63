// SPDX-License-Identifier: MIT
#include "app/ui/MultiSelectionSummary.h"

#include "app/state/AppState.h"
#include "app/ui/Theme.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/Numbers.h"

#include <QHBoxLayout>

MultiSelectionSummary::MultiSelectionSummary(AppState& state, std::int64_t count, QWidget* parent)
    : EmptyStateView(QStringLiteral("square.stack.3d.up"), tr("%1 kayıt seçildi").arg(Numbers::grouped(count)),
                     tr("Toplu işlemler için aşağıdaki düğmeleri ya da sağ tık menüsünü kullan."), parent) {
    auto* const duplicate = new Button(tr("Çoğalt"));
    auto* const remove = new Button(tr("Sil"), Button::Variant::danger);
    connect(duplicate, &Button::clicked, &state, [&state] { state.duplicateEntries(state.selectedEntryIDs()); });
    connect(remove, &Button::clicked, &state, [&state] { state.deleteEntries(state.selectedEntryIDs()); });

    auto* const buttons = new QWidget;
    auto* const line = new QHBoxLayout(buttons);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(Metric::s);
    line->addWidget(duplicate);
    line->addWidget(remove);
    addBelow(buttons);
}
