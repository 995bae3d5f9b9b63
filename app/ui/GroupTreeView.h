// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class AppState;
class GroupTreeModel;
class RowListView;
class TextLabel;

/// The left column: the vault's name and its groups. The selected group is what the entry list shows.
class GroupTreeView : public QWidget {
    Q_OBJECT

public:
    explicit GroupTreeView(AppState& state, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QWidget* makeHeader();
    void arrange();
    void connectState();
    void showGroups();
    void showSelection();
    void storeSelection();
    bool answerKey(int key);
    bool answerClick(const QPoint& position);
    void setExpanded(int row, bool isExpanded);

    AppState& m_state;
    GroupTreeModel* m_model;
    TextLabel* m_name;
    RowListView* m_list;
    bool m_isShowing = false;  // a selection that is shown was not chosen
};
