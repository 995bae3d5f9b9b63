// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class AppState;
class EntryListModel;
class EmptyStateView;
class QItemSelection;
class QStackedWidget;
class RowListView;
class SectionHeader;

/// The middle column: the entries of the selected group, or what the search has found.
class EntryListView : public QWidget {
    Q_OBJECT

public:
    explicit EntryListView(AppState& state, QWidget* parent = nullptr);

    [[nodiscard]] RowListView* list() const noexcept { return m_list; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void arrange();
    void connectState();
    void showEntries();
    void showSelection();
    void storeSelection();
    [[nodiscard]] QWidget* emptyState();
    bool answerKey(int key);

    AppState& m_state;
    EntryListModel* m_model;
    SectionHeader* m_header;
    QStackedWidget* m_content;
    RowListView* m_list;
    QWidget* m_empty = nullptr;
    bool m_isShowing = false;  // a selection that is shown was not chosen
};
