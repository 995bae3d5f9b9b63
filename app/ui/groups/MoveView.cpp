// SPDX-License-Identifier: MIT
#include "app/ui/groups/MoveView.h"

#include "app/state/GroupTree.h"
#include "app/ui/components/Card.h"
#include "app/ui/components/LongText.h"
#include "app/ui/components/Texts.h"
#include "app/ui/groups/GroupRowDelegate.h"
#include "app/ui/rows/RowListView.h"
#include "app/ui/theme/Theme.h"

#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr QSize smallest(320, 320);
constexpr QSize ideal(420, 520);

/// What the rows are on: a field that scrolls by itself, as deep as a field is.
class ListGround final : public QWidget {
public:
    explicit ListGround(RowListView& list) {
        auto* const column = new QVBoxLayout(this);
        column->setContentsMargins(Metric::xl, Metric::xs, Metric::xl, Metric::l);
        auto* const card = new Card;
        card->content()->setContentsMargins(1, 1, 1, 1);
        card->content()->addWidget(&list);
        column->addWidget(card);
    }
};

}  // namespace

MoveView::MoveView(AppState& state, MoveSubject subject, QWidget* parent)
    : SheetScaffold(subject.groupID ? QStringLiteral("Grubu taşı") : QStringLiteral("Gruba taşı"),
                    QStringLiteral("Vazgeç"), QStringLiteral("Taşı"), parent),
      m_state(state),
      m_subject(std::move(subject)),
      m_model(new GroupTreeModel(this)),
      m_list(new RowListView(QStringLiteral("Hedef grup"))) {
    setSizes(smallest, ideal);
    setSubtitle(subjectText());
    arrange();
    connectControls();
    showTargets();
}

void MoveView::arrange() {
    m_list->setModel(m_model);
    m_list->setItemDelegate(new GroupRowDelegate(m_list));
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    setBody(new ListGround(*m_list));
    setFirstField(m_list);
}

void MoveView::connectControls() {
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &MoveView::showConfirm);
    connect(m_list, &RowListView::clickedTwice, this, &MoveView::move);
    connect(this, &MoveView::cancelled, this, &MoveView::dismissed);
    connect(this, &MoveView::confirmed, this, &MoveView::move);
    connect(&m_state, &AppState::databaseChanged, this, &MoveView::showTargets);
}

/// Begins at the group that holds what moves, and stays where the user has gone when the vault changes behind.
void MoveView::showTargets() {
    const auto place = chosen() ? chosen() : present();
    if (!present())
        return emit dismissed();
    m_model->showTargets(m_state.database(), movingGroup());
    m_list->setCurrentIndex(m_model->index(m_model->rowOf(*place).value_or(0)));
    showConfirm();
}

/// What is in a group already cannot be moved there.
void MoveView::showConfirm() {
    const auto target = chosen();
    setConfirmEnabled(target && isSomethingElsewhere(*target));
}

std::optional<GroupTreeModel::Moving> MoveView::movingGroup() const {
    if (!m_subject.groupID)
        return std::nullopt;
    return GroupTreeModel::Moving{*m_subject.groupID, m_state.deepestParentLevel(*m_subject.groupID)};
}

QString MoveView::subjectText() const {
    if (m_subject.groupID) {
        const auto* const group = GroupTree::findGroup(*m_state.root(), *m_subject.groupID);
        return !group || group->name.empty() ? QStringLiteral("Adsız grup") : LongText::beginning(group->name);
    }
    if (m_subject.entryIDs.size() > 1)
        return QStringLiteral("%1 kayıt").arg(m_subject.entryIDs.size());
    const auto* const entry = GroupTree::findEntry(*m_state.root(), *m_subject.entryIDs.begin());
    return !entry || entry->title.empty() ? QStringLiteral("Adsız kayıt") : LongText::beginning(entry->title);
}

/// The group that holds what moves, or the first of it; none once that has gone.
std::optional<UUID> MoveView::present() const {
    const auto* const root = m_state.root();
    if (!root)
        return std::nullopt;
    const auto idOf = [](const std::optional<KdbxGroup>& group) {
        return group ? std::optional(group->id) : std::nullopt;
    };
    if (m_subject.groupID)
        return idOf(GroupTree::parentOfGroup(*root, *m_subject.groupID));
    for (const auto& id : m_subject.entryIDs)
        if (const auto holder = idOf(GroupTree::groupContainingEntry(*root, id)))
            return holder;
    return std::nullopt;
}

std::optional<UUID> MoveView::chosen() const {
    const auto index = m_list->currentIndex();
    return index.isValid() ? std::optional(m_model->group(index.row()).id) : std::nullopt;
}

bool MoveView::isSomethingElsewhere(const UUID& groupID) const {
    if (m_subject.groupID)
        return groupID != present();
    const auto* const group = m_state.root() ? GroupTree::findGroup(*m_state.root(), groupID) : nullptr;
    return group && GroupTree::indicesOf(group->entries, m_subject.entryIDs).size() < m_subject.entryIDs.size();
}

void MoveView::move() {
    const auto target = chosen();
    if (!target || !isSomethingElsewhere(*target))
        return;
    disconnect(&m_state, nullptr, this, nullptr);  // the step itself is no change behind
    if (m_subject.groupID)
        m_state.moveGroupTo(*m_subject.groupID, *target);
    else
        m_state.moveEntriesTo(m_subject.entryIDs, *target);
    emit dismissed();
}
