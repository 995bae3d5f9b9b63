// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/Environment.h"

#include <QWidget>

class Commands;
class EntryListView;
class GroupTreeView;

/// What the window shows while unlocked: groups, entries and one entry's fields, under one toolbar and above one
/// status bar.
class MainView : public QWidget {
    Q_OBJECT

public:
    MainView(const Environment& environment, Commands& commands, QWidget* parent = nullptr);

    /// Gives the keyboard to the entries, or to the groups where there are none.
    void takeFocus();

private:
    GroupTreeView* m_groups;
    EntryListView* m_entries;
};
