// SPDX-License-Identifier: MIT
#include "app/ui/entries/EntryListView.h"

#include "app/state/AppState.h"
#include "app/ui/commands/CommandButton.h"
#include "app/ui/components/Announcement.h"
#include "app/ui/components/BareLayout.h"
#include "app/ui/components/EmptyStateView.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/Numbers.h"
#include "app/ui/components/SectionHeader.h"
#include "app/ui/components/TabStops.h"
#include "app/ui/components/Texts.h"
#include "app/ui/entries/EntryListModel.h"
#include "app/ui/entries/EntryRowActions.h"
#include "app/ui/entries/EntryRowDelegate.h"
#include "app/ui/entries/EntryRowMenu.h"
#include "app/ui/entries/EntrySortMenu.h"
#include "app/ui/rows/EntryDrag.h"
#include "app/ui/rows/RowDropTarget.h"
#include "app/ui/rows/RowListView.h"
#include "app/ui/theme/Theme.h"
#include "core/model/UUIDSet.h"

#include <QDrag>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStackedWidget>

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace {

constexpr std::chrono::milliseconds preparationPause{10};   // between two steps, so that a key is answered first
constexpr std::chrono::milliseconds pauseAfterChange{100};  // which is to be painted before
constexpr std::chrono::milliseconds pauseBeforeCount{400};  // after a letter, so that a word is not talked into
constexpr std::chrono::seconds firstPreparation{1};         // when the window has long been painted

/// Follows a row while others come and go, and once it has gone itself the place that it leaves.
class PlaceInRows {
public:
    PlaceInRows(const QAbstractItemModel& model, int row) : m_row(row) {
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &m_context,
                         [this](const QModelIndex&, int first, int last) {
                             m_row = m_row > last ? m_row - (last - first + 1) : std::min(m_row, first);
                         });
        QObject::connect(
            &model, &QAbstractItemModel::rowsInserted, &m_context,
            [this](const QModelIndex&, int first, int last) { m_row += m_row >= first ? last - first + 1 : 0; });
    }
    [[nodiscard]] int row() const noexcept { return m_row; }

private:
    QObject m_context;
    int m_row;
};

}  // namespace

EntryListView::EntryListView(AppState& state, QWidget* parent)
    : QWidget(parent),
      m_state(state),
      m_model(new EntryListModel(this)),
      m_header(new SectionHeader),
      m_sort(new IconButton(QStringLiteral("arrow.up.arrow.down"), {})),
      m_add(makeCommandButton(Command::ID::newEntry)),
      m_content(new QStackedWidget),
      m_list(new RowListView(QStringLiteral("Kayıtlar"))),
      m_spokenCount(new Announcement(this)) {
    makeHeader();
    arrange();
    connectList();
    connectState();
    showEntries();
}

void EntryListView::makeHeader() {
    m_sort->setMenu(new EntrySortMenu(m_state, this));
    m_header->addAction(m_sort);
    m_header->addAction(m_add);
    connect(m_add, &IconButton::clicked, this, [this] { Command::of(Command::ID::newEntry)(m_state); });
}

void EntryListView::arrange() {
    m_list->setModel(m_model);
    m_list->setItemDelegate(new EntryRowDelegate(m_list));
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setDragEnabled(true);
    m_list->installEventFilter(this);
    new EntryRowActions(m_state, *m_model, *m_list);
    m_content->addWidget(m_list);

    auto* const column = bareColumn(this, 0);
    column->addWidget(m_header);
    column->addWidget(m_content, 1);
}

void EntryListView::connectList() {
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &EntryListView::storeSelection);
    connect(m_list, &RowListView::menuRequested, this, &EntryListView::openMenu);
    connect(m_list, &RowListView::clickedTwice, this, [this] { Command::of(Command::ID::edit)(m_state, nullptr); });
    connect(m_list, &RowListView::dragStarted, this, &EntryListView::drag);
    new RowDropTarget(*m_list,
                      {.placeAt = [this](const QPoint& position) { return dropPlaceAt(position); },
                       .drop = [this](const std::set<UUID>& ids, const RowMark& place) { takeDrop(ids, place); }});
}

void EntryListView::connectState() {
    connect(&m_state, &AppState::databaseChanged, this, &EntryListView::showEntries);
    connect(&m_state, &AppState::sortChanged, this, &EntryListView::showEntries);
    connect(&m_state, &AppState::selectedGroupIDChanged, this, &EntryListView::showList);
    connect(&m_state, &AppState::searchTextChanged, this, &EntryListView::showSearch);
    connect(&m_state, &AppState::selectedEntryIDsChanged, this, &EntryListView::showSelection);
    m_counting.setSingleShot(true);
    connect(&m_counting, &QTimer::timeout, this, &EntryListView::sayCount);

    const auto prepareSoon = [this] { m_preparing.start(pauseAfterChange); };
    m_preparing.setSingleShot(true);
    m_preparing.start(firstPreparation);
    connect(&m_state, &AppState::databaseChanged, this, prepareSoon);
    connect(&m_state, &AppState::sortChanged, this, prepareSoon);
    connect(&m_preparing, &QTimer::timeout, this, [this] {
        if (m_state.prepareBrowsing())
            m_preparing.start(preparationPause);
    });
}

/// Another list than before: it begins at its top.
void EntryListView::showList() {
    showEntries();
    m_list->scrollToTop();
    showSelection();
}

/// What a search hides is not selected any more: no command is to act on what the list does not show.
void EntryListView::showSearch() {
    showList();
    m_spokenCount->say({});
    if (!m_state.isSearching())
        return m_counting.stop();
    m_counting.start(pauseBeforeCount);
    std::set<UUID> shown;
    for (const auto& range : m_list->selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            shown.insert(m_model->id(row));
    m_state.setSelectedEntryIDs(std::move(shown));
}

void EntryListView::sayCount() {
    const int count = m_model->rowCount();
    m_spokenCount->say(count == 0 ? QStringLiteral("Eşleşme yok") : QStringLiteral("%1 eşleşme").arg(count));
}

/// The same list, perhaps changed: the list stays where it was scrolled to.
void EntryListView::showEntries() {
    const auto current = m_list->currentIndex();
    const auto currentID = current.isValid() ? std::optional(m_model->entry(current.row()).id) : std::nullopt;
    const int scrolled = m_list->verticalScrollBar()->value();
    {
        const QScopedValueRollback showing(m_isShowing, true);
        const PlaceInRows place(*m_model, current.row());
        m_model->show(m_state.database(), m_state.visibleEntries());
        showCurrent(currentID, place.row());
    }
    m_list->verticalScrollBar()->setValue(scrolled);
    showHeader();
    showContent();
    showSelection();
}

void EntryListView::showHeader() {
    const auto* group = m_state.selectedGroup();
    const int count = m_model->rowCount();
    if (m_state.isSearching()) {
        m_header->setTitle(QStringLiteral("Arama sonuçları"));
        // In one go: what is searched for may itself look like a place to fill.
        m_header->setSubtitle(
            QStringLiteral("“%1” · %2 eşleşme").arg(qtText(m_state.searchText()), Numbers::grouped(count)));
    } else {
        m_header->setTitle(group ? qtText(group->name) : QStringLiteral("Tümü"));
        m_header->setSubtitle(QStringLiteral("%1 kayıt").arg(Numbers::grouped(count)));
    }
    m_sort->setTip(QStringLiteral("Sıralama: %1").arg(qtText(EntrySort::label(m_state.sort().column))));
}

void EntryListView::showContent() {
    const auto search = m_state.isSearching() ? m_state.searchText() : std::string();
    const bool isEmpty = m_model->rowCount() == 0 && !m_state.isLocked();
    if (isEmpty && m_empty && m_emptySearch == search)
        return;  // its button may have the focus
    m_emptySearch = search;
    auto* const former = std::exchange(m_empty, nullptr);
    if (isEmpty) {
        m_empty = emptyState();
        m_empty->standBeside(SectionHeader::sectionHeight);
        m_content->addWidget(m_empty);
        m_content->setCurrentWidget(m_empty);
    } else {
        m_content->setCurrentWidget(m_list);
    }
    if (former)
        former->deleteLater();  // a button of it may be what was pressed
}

EmptyStateView* EntryListView::emptyState() {
    if (!m_state.isSearching()) {
        auto* const empty = new EmptyStateView(
            QStringLiteral("tray"), QStringLiteral("Bu grup boş"),
            QStringLiteral("Buraya ilk kaydını ekle; kullanıcı adı, parola ve otomatik yazma sekansı saklanır."));
        empty->setAction(QStringLiteral("Kayıt ekle"), [this] { Command::of(Command::ID::newEntry)(m_state); });
        return empty;
    }
    auto* const empty =
        new EmptyStateView(QStringLiteral("magnifyingglass"), QStringLiteral("Eşleşme yok"),
                           QStringLiteral("“%1” için kayıt bulunamadı. Başka bir terim dene ya da aramayı temizle.")
                               .arg(qtText(m_state.searchText())));
    empty->setAction(QStringLiteral("Aramayı temizle"), [this] { m_state.clearSearch(); });
    return empty;
}

void EntryListView::showSelection() {
    if (m_isShowing)
        return;
    const QScopedValueRollback showing(m_isShowing, true);
    const auto selection = rowsOf(m_state.selectedEntryIDs());
    auto* const model = m_list->selectionModel();
    if (model->selection() == selection)
        return;
    model->select(selection, QItemSelectionModel::ClearAndSelect);
    if (selection.isEmpty() || selection.contains(model->currentIndex()))
        return;
    const auto first = selection.first().topLeft();
    model->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    m_list->scrollTo(first);
}

QItemSelection EntryListView::rowsOf(const std::set<UUID>& ids) const {
    QItemSelection selection;
    UUIDSet wanted(ids.begin(), ids.end(), ids.size());  // a tree is slow to ask often
    for (int row = 0; !wanted.empty() && row < m_model->rowCount(); ++row) {
        if (!wanted.erase(m_model->id(row)))
            continue;
        const auto index = m_model->index(row);
        if (!selection.isEmpty() && selection.last().bottom() == row - 1)
            selection.last() = QItemSelectionRange(selection.last().topLeft(), index);
        else
            selection.append(QItemSelectionRange(index));
    }
    return selection;
}

/// Keeps the keyboard at the row where it was, or at the one that took its place.
void EntryListView::showCurrent(const std::optional<UUID>& id, int row) {
    if (!id || m_model->rowCount() == 0)
        return;
    const int now = m_model->rowOf(*id).value_or(std::min(row, m_model->rowCount() - 1));
    m_list->selectionModel()->setCurrentIndex(m_model->index(now), QItemSelectionModel::NoUpdate);
}

void EntryListView::storeSelection() {
    if (m_isShowing)
        return;
    std::vector<UUID> ids;
    for (const auto& range : m_list->selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            ids.push_back(m_model->id(row));
    std::sort(ids.begin(), ids.end());  // a set takes what is sorted many times as fast
    const QScopedValueRollback showing(m_isShowing, true);
    m_state.setSelectedEntryIDs(std::set(ids.begin(), ids.end()));
}

void EntryListView::openMenu(const QModelIndex& index, const QPoint& globalPosition) {
    auto* const menu = EntryRowMenu::make(m_state, m_model->entry(index.row()), this,
                                          [this](const std::set<UUID>& ids) { emit moveWanted(ids); });
    menu->setAccessibleName(index.data(Qt::AccessibleTextRole).toString());
    m_list->setMark(RowMark{index.row(), RowMark::Shape::outline});
    connect(menu, &QMenu::aboutToHide, m_list, [this] { m_list->setMark(std::nullopt); });
    menu->popup(globalPosition);
}

void EntryListView::goToFirstResult() {
    if (m_state.isSearching() && m_model->rowCount() > 0)
        m_list->setCurrentIndex(m_model->index(0));
    goToResults();
}

void EntryListView::goToResults() {
    if (m_model->rowCount() == 0) {
        if (auto* const wayOut = m_empty ? TabStops::first(*m_empty) : nullptr)
            wayOut->setFocus(Qt::OtherFocusReason);
        return;
    }
    if (!m_list->selectionModel()->hasSelection())
        m_list->setCurrentIndex(m_model->index(0));
    m_list->setFocus(Qt::OtherFocusReason);
    m_list->scrollTo(m_list->currentIndex());
}

/// From the way out of a search that has found nothing, and from the buttons above.
void EntryListView::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape || event->modifiers() != Qt::NoModifier || !m_state.isSearching())
        return QWidget::keyPressEvent(event);
    m_state.clearSearch();
    emit searchEnded();
}

bool EntryListView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list && event->type() == QEvent::KeyPress && answerKey(static_cast<const QKeyEvent&>(*event)))
        return true;
    return QWidget::eventFilter(watched, event);
}

bool EntryListView::answerKey(const QKeyEvent& event) {
    if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return false;
    switch (event.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (!m_state.focusedEntry())
                return false;
            m_state.copyPassword();
            return true;
        case Qt::Key_Escape:
            if (m_state.isSearching())
                m_state.clearSearch();
            else if (!m_state.selectedEntryIDs().empty())
                m_state.setSelectedEntryIDs({});
            else
                return false;
            return true;
        case Qt::Key_Delete:
            m_state.deleteEntries(m_state.selectedEntryIDs());
            return true;
        case Qt::Key_Up:
            return m_list->currentIndex().row() == 0 && selectCurrent();
        case Qt::Key_Down:
            return selectCurrent();
        default:
            return false;
    }
}

/// Where nothing is selected, the way down begins with the row that the keyboard is on: the first one of a list, and
/// after a delete the one that came next.
bool EntryListView::selectCurrent() {
    const auto current = m_list->currentIndex();
    if (m_list->selectionModel()->hasSelection() || !current.isValid())
        return false;
    m_list->setCurrentIndex(current);
    return true;
}

void EntryListView::drag(const QModelIndex& index) {
    const auto& entry = m_model->entry(index.row());
    const auto ids = EntryRowMenu::targetIDs(m_state, entry.id);
    auto* const content = new QMimeData;
    content->setText(EntryDrag::textOf({ids.begin(), ids.end()}));
    auto* const drag = new QDrag(m_list);
    drag->setMimeData(content);
    drag->setPixmap(EntryDrag::picture(index.data().toString(), entry.iconID, ids.size(), devicePixelRatioF()));
    drag->setHotSpot({Metric::l, Metric::l});
    m_list->forgetPointer();
    drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
}

std::optional<RowMark> EntryListView::dropPlaceAt(const QPoint& position) const {
    if (m_state.isSearching() || m_state.isLocked())
        return std::nullopt;
    if (const auto index = m_list->indexAt(position); index.isValid())
        return RowMark{index.row(), RowMark::Shape::lineAbove};
    return RowMark{m_model->rowCount() - 1, RowMark::Shape::lineBelow};
}

void EntryListView::takeDrop(const std::set<UUID>& ids, const RowMark& place) {
    if (place.shape == RowMark::Shape::lineBelow)
        m_state.moveEntriesToEnd(ids);
    else
        m_state.moveEntriesBefore(ids, m_model->entry(place.row).id);
}
