// SPDX-License-Identifier: MIT
#include "app/ui/EntryRowActions.h"

#include "app/state/AppState.h"
#include "app/state/GroupTree.h"
#include "app/ui/EntryListModel.h"
#include "app/ui/RowListView.h"
#include "app/ui/Theme.h"
#include "app/ui/components/IconButton.h"

#include <QHBoxLayout>

#include <functional>

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
    line->addWidget(add(QStringLiteral("person"), tr("Kullanıcı adını kopyala"), &AppState::copyUsername));
    line->addWidget(add(QStringLiteral("key.horizontal"), tr("Parolayı kopyala"), &AppState::copyPassword));
    m_autoType = add(QStringLiteral("keyboard"), tr("Otomatik yaz"), &AppState::performAutoType);
    line->addWidget(m_autoType);
    connect(&list, &RowListView::hoverMoved, this, &EntryRowActions::follow);
    connect(&model, &QAbstractItemModel::dataChanged, this, &EntryRowActions::follow);
}

IconButton* EntryRowActions::add(const QString& symbol, const QString& tip, void (AppState::*verb)(const KdbxEntry*)) {
    auto* const button = new IconButton(symbol, tip, this);
    button->setSides(buttonSide, symbolSide);
    button->setOnHoverGround(true);
    button->setFocusPolicy(Qt::NoFocus);  // it goes with the pointer, and the focus would go with it
    button->setCursor(Qt::ArrowCursor);
    connect(button, &IconButton::clicked, this, [this, verb] {
        const auto* root = m_state.root();
        if (const auto* entry = root && m_entryID ? GroupTree::findEntry(*root, *m_entryID) : nullptr)
            std::invoke(verb, m_state, entry);
    });
    return button;
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
