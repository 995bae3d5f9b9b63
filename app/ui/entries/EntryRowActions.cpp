// SPDX-License-Identifier: MIT
#include "app/ui/entries/EntryRowActions.h"

#include "app/state/AppState.h"
#include "app/state/GroupTree.h"
#include "app/ui/commands/Command.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/entries/EntryListModel.h"
#include "app/ui/rows/RowListView.h"
#include "app/ui/theme/Theme.h"

#include <QHBoxLayout>

namespace {

constexpr int buttonSide = Metric::controlHeightSmall;
constexpr int symbolSide = 14;

}  // namespace

int EntryRowActions::widthFor(bool hasAutoType) {
    const int buttons = hasAutoType ? 3 : 2;
    return buttons * buttonSide + (buttons - 1) * Metric::xs + Metric::s;
}

EntryRowActions::EntryRowActions(AppState& state, const EntryListModel& model, RowListView& list)
    : QWidget(list.viewport()), m_state(state), m_model(model), m_list(list) {
    hide();
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(Metric::s, 0, 0, 0);
    line->setSpacing(Metric::xs);
    line->addStretch();
    line->addWidget(add(Command::of(Command::ID::copyUsername)));
    line->addWidget(add(Command::of(Command::ID::copyPassword)));
    m_autoType = add(Command::of(Command::ID::autoType));
    line->addWidget(m_autoType);
    list.setVerbs([this](const QModelIndex& index) { return verbsOf(m_model.entry(index.row())); });
    connect(&list, &RowListView::hoverMoved, this, &EntryRowActions::follow);
    connect(&model, &QAbstractItemModel::dataChanged, this, &EntryRowActions::follow);
}

IconButton* EntryRowActions::add(const Command& command) {
    auto* const button = new IconButton(command.symbol, command.text(), this);
    button->setSides(buttonSide, symbolSide);
    button->setOnHoverGround(true);
    button->setFocusPolicy(Qt::NoFocus);  // it goes with the pointer, and the focus would go with it
    button->setCursor(Qt::ArrowCursor);
    connect(button, &IconButton::clicked, this, [this, &command] {
        if (m_entryID)
            call(command, *m_entryID);
    });
    return button;
}

QList<RowVerb> EntryRowActions::verbsOf(const KdbxEntry& entry) {
    const auto verb = [this, id = entry.id](Command::ID commandID) {
        const auto& command = Command::of(commandID);
        return RowVerb{command.text(), [this, &command, id] { call(command, id); }};
    };
    QList<RowVerb> verbs{verb(Command::ID::copyUsername), verb(Command::ID::copyPassword)};
    if (entry.autoTypeEnabled)
        verbs += verb(Command::ID::autoType);
    return verbs;
}

/// With the entry as the vault has it now; not if it has gone by then.
void EntryRowActions::call(const Command& command, const UUID& id) {
    const auto* root = m_state.root();
    if (const auto* entry = root ? GroupTree::findEntry(*root, id) : nullptr)
        command(m_state, entry);
}

void EntryRowActions::follow() {
    const auto index = m_list.hoveredIndex();
    setVisible(index.isValid());
    if (!index.isValid())
        return;
    const auto& entry = m_model.entry(index.row());
    m_entryID = entry.id;
    m_autoType->setVisible(entry.autoTypeEnabled);
    const QRect row = m_list.visualRect(index).adjusted(Metric::l, 0, -Metric::l, 0);
    const int width = widthFor(entry.autoTypeEnabled);
    setGeometry(QStyle::visualRect(layoutDirection(), row, {row.right() + 1 - width, row.top(), width, row.height()}));
}
