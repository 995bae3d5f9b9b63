// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

class AppState;
class QActionGroup;

/// By what the list is sorted, and which way: two choices in one menu.
class EntrySortMenu : public QMenu {
    Q_OBJECT

public:
    explicit EntrySortMenu(AppState& state, QWidget* parent = nullptr);

private:
    QActionGroup* addChoice(const QString& title);
    void showSort();

    AppState& m_state;
    QActionGroup* m_columns;
    QActionGroup* m_directions;
};
