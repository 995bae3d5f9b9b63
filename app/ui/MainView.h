// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/Environment.h"

#include <QWidget>

class Commands;
class EntryListView;

/// What the window shows while unlocked: groups, entries and one entry's fields, under one toolbar and above one
/// status bar.
class MainView : public QWidget {
    Q_OBJECT

public:
    MainView(const Environment& environment, Commands& commands, QWidget* parent = nullptr);

    /// Gives the list the keyboard.
    void takeFocus();

private:
    EntryListView* m_entries;
};
