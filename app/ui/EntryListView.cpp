// SPDX-License-Identifier: MIT
#include "app/ui/EntryListView.h"

#include "app/state/AppState.h"
#include "app/ui/EntryListModel.h"
#include "app/ui/EntryRowDelegate.h"
#include "app/ui/RowListView.h"
#include "app/ui/Texts.h"
#include "app/ui/Theme.h"
#include "app/ui/components/EmptyStateView.h"
#include "app/ui/components/SectionHeader.h"

#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <QVBoxLayout>

EntryListView::EntryListView(AppState& state, QWidget* parent)
    : QWidget(parent),
      m_state(state),
      m_model(new EntryListModel(this)),
      m_header(new SectionHeader),
      m_content(new QStackedWidget),
      m_list(new RowListView(tr("Kayıtlar"))) {
    arrange();
    connectState();
    showEntries();
}

void EntryListView::arrange() {
    m_list->setModel(m_model);
    m_list->setItemDelegate(new EntryRowDelegate(m_list));
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->installEventFilter(this);
    m_content->addWidget(m_list);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_header);
    column->addWidget(m_content, 1);
}

void EntryListView::connectState() {
    for (const auto signal : {&AppState::databaseChanged, &AppState::selectedGroupIDChanged,
                              &AppState::searchTextChanged, &AppState::sortChanged})
        connect(&m_state, signal, this, &EntryListView::showEntries);
    connect(&m_state, &AppState::selectedEntryIDsChanged, this, &EntryListView::showSelection);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &EntryListView::storeSelection);
}

void EntryListView::showEntries() {
    {
        const QScopedValueRollback showing(m_isShowing, true);
        m_model->show(m_state.database(), m_state.visibleEntries());
    }
    const auto* group = m_state.selectedGroup();
    const bool isSearching = m_state.isSearching();
    m_header->setTitle(isSearching ? tr("Arama sonuçları") : (group ? qtText(group->name) : tr("Tümü")));
    m_header->setSubtitle(isSearching
                              ? tr("“%1” · %2 eşleşme").arg(qtText(m_state.searchText())).arg(m_model->rowCount())
                              : tr("%1 kayıt").arg(m_model->rowCount()));
    delete std::exchange(m_empty, nullptr);
    if (m_model->rowCount() == 0 && !m_state.isLocked()) {
        m_empty = emptyState();
        m_content->addWidget(m_empty);
        m_content->setCurrentWidget(m_empty);
    } else {
        m_content->setCurrentWidget(m_list);
    }
    showSelection();
}

QWidget* EntryListView::emptyState() {
    if (!m_state.isSearching())
        return new EmptyStateView(
            QStringLiteral("tray"), tr("Bu grup boş"),
            tr("Buraya ilk kaydını ekle; kullanıcı adı, parola ve otomatik yazma sekansı saklanır."));
    auto* const empty = new EmptyStateView(QStringLiteral("magnifyingglass"), tr("Eşleşme yok"),
                                           tr("“%1” için kayıt bulunamadı. Başka bir terim dene ya da aramayı temizle.")
                                               .arg(qtText(m_state.searchText())));
    // Later: the button that is clicked goes with this view.
    empty->setAction(tr("Aramayı temizle"), [this] {
        QMetaObject::invokeMethod(
            this, [this] { m_state.clearSearch(); }, Qt::QueuedConnection);
    });
    return empty;
}

void EntryListView::showSelection() {
    const QScopedValueRollback showing(m_isShowing, true);
    QItemSelection selection;
    const auto& ids = m_state.selectedEntryIDs();
    int first = -1;
    for (int row = 0; !ids.empty() && row < m_model->rowCount(); ++row) {
        if (!ids.contains(m_model->entry(row).id))
            continue;
        const auto index = m_model->index(row);
        if (!selection.isEmpty() && selection.last().bottom() == row - 1)
            selection.last() = QItemSelectionRange(selection.last().topLeft(), index);
        else
            selection.append(QItemSelectionRange(index));
        first = first < 0 ? row : first;
    }
    auto* const model = m_list->selectionModel();
    if (model->selection() == selection)
        return;
    model->select(selection, QItemSelectionModel::ClearAndSelect);
    if (first >= 0 && !selection.contains(model->currentIndex())) {
        model->setCurrentIndex(m_model->index(first), QItemSelectionModel::NoUpdate);
        m_list->scrollTo(m_model->index(first));
    }
}

void EntryListView::storeSelection() {
    if (m_isShowing)
        return;
    std::set<UUID> ids;
    for (const auto& index : m_list->selectionModel()->selectedIndexes())
        ids.insert(m_model->entry(index.row()).id);
    m_state.setSelectedEntryIDs(std::move(ids));
}

bool EntryListView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list && event->type() == QEvent::KeyPress && answerKey(static_cast<QKeyEvent*>(event)->key()))
        return true;
    return QWidget::eventFilter(watched, event);
}

bool EntryListView::answerKey(int key) {
    if (key != Qt::Key_Escape)
        return false;
    if (m_state.isSearching())
        m_state.clearSearch();
    else if (!m_state.selectedEntryIDs().empty())
        m_state.setSelectedEntryIDs({});
    else
        return false;
    return true;
}
