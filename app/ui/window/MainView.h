// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/Environment.h"

#include <QWidget>

class Columns;
class Commands;
class EntryListView;
class GroupTreeView;
class RowListView;
class SearchField;
struct MoveSubject;

/// What the window shows while unlocked: groups, entries and one entry's fields, under one toolbar and above one
/// status bar.
class MainView : public QWidget {
    Q_OBJECT

public:
    MainView(const Environment& environment, Commands& commands, QWidget* parent = nullptr);

    /// Gives the keyboard to the entries, or to the groups where there are none.
    void takeFocus();
    [[nodiscard]] RowListView* groupList() const;

    /// Whether the column of the groups shows where there is room for it; all columns do at first.
    [[nodiscard]] bool areGroupsWanted() const;
    void setGroupsWanted(bool areWanted);
    /// For the keyboard, which changes the columns' widths there.
    void goToNextDivider();

signals:
    /// A row's menu asks for a sheet with a group to choose.
    void moveWanted(const MoveSubject& subject);

private:
    void connectSearch(const SearchField& search);

    GroupTreeView* m_groups;
    EntryListView* m_entries;
    Columns* m_columns = nullptr;
};
