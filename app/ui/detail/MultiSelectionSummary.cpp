// SPDX-License-Identifier: MIT
#include "app/ui/detail/MultiSelectionSummary.h"

#include "app/state/AppState.h"
#include "app/ui/commands/Command.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/Numbers.h"
#include "app/ui/theme/Theme.h"

#include <QHBoxLayout>

MultiSelectionSummary::MultiSelectionSummary(AppState& state, std::int64_t count, QWidget* parent)
    : EmptyStateView(QStringLiteral("square.stack.3d.up"),
                     QStringLiteral("%1 kayıt seçildi").arg(Numbers::grouped(count)),
                     QStringLiteral("Toplu işlemler için aşağıdaki düğmeleri ya da sağ tık menüsünü kullan."), parent) {
    const auto makeButton = [&state](Command::ID id, Button::Variant variant) {
        const auto& command = Command::of(id);
        auto* const button = new Button(command.text(), variant);
        connect(button, &Button::clicked, &state, [&state, &command] { command(state, state.selectedEntryIDs()); });
        return button;
    };

    auto* const buttons = new QWidget;
    auto* const line = new QHBoxLayout(buttons);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(Metric::s);
    line->addWidget(makeButton(Command::ID::duplicate, Button::Variant::secondary));
    line->addWidget(makeButton(Command::ID::remove, Button::Variant::danger));
    addBelow(buttons);
}
