// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/UUID.h"

#include <QTimer>
#include <QWidget>

#include <optional>
#include <set>
#include <string>

class Announcement;
class AppState;
class EmptyStateView;
class EntryListModel;
class IconButton;
class QItemSelection;
class QKeyEvent;
class QModelIndex;
class QStackedWidget;
class RowListView;
class SectionHeader;
struct RowMark;

/// The middle column: the entries of the selected group, or what the search has found.
class EntryListView : public QWidget {
    Q_OBJECT

public:
    explicit EntryListView(AppState& state, QWidget* parent = nullptr);

    [[nodiscard]] RowListView* list() const noexcept { return m_list; }

    /// Gives the keyboard to what the search has found and selects the first of it; where nothing is found, to the way
    /// out of the search.
    void goToFirstResult();
    /// The same, but what is selected among it stays so.
    void goToResults();

signals:
    /// A search was ended from here, by a key.
    void searchEnded();
    /// The user wants to choose a group for entries.
    void moveWanted(const std::set<UUID>& ids);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeHeader();
    void arrange();
    void connectList();
    void connectState();

    void showList();
    void showSearch();
    void sayCount();
    void showEntries();
    void showHeader();
    void showContent();
    [[nodiscard]] EmptyStateView* emptyState();
    void showSelection();
    [[nodiscard]] QItemSelection rowsOf(const std::set<UUID>& ids) const;
    void showCurrent(const std::optional<UUID>& id, int row);
    void storeSelection();

    void openMenu(const QModelIndex& index, const QPoint& globalPosition);
    bool answerKey(const QKeyEvent& event);
    bool selectCurrent();

    void drag(const QModelIndex& index);
    [[nodiscard]] std::optional<RowMark> dropPlaceAt(const QPoint& position) const;
    void takeDrop(const std::set<UUID>& ids, const RowMark& place);

    AppState& m_state;
    EntryListModel* m_model;
    SectionHeader* m_header;
    IconButton* m_sort;
    IconButton* m_add;
    QStackedWidget* m_content;
    RowListView* m_list;
    EmptyStateView* m_empty = nullptr;
    std::string m_emptySearch;  // what it says that nothing matches
    Announcement* m_spokenCount;
    QTimer m_counting;         // until the letters rest
    QTimer m_preparing;        // for what comes next, while nothing else is asked of us
    bool m_isShowing = false;  // a selection that is shown was not chosen, and one that was chosen is shown already
};
