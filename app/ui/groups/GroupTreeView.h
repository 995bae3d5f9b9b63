// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/UUID.h"

#include <QWidget>

#include <optional>
#include <set>

class AppState;
class GroupTreeModel;
class IconButton;
class QKeyEvent;
class QModelIndex;
class RowListView;
class TextLabel;
struct RowMark;
struct RowVerb;

/// The left column: the vault's name and its groups. The selected group is what the entry list shows.
class GroupTreeView : public QWidget {
    Q_OBJECT

public:
    explicit GroupTreeView(AppState& state, QWidget* parent = nullptr);

    [[nodiscard]] RowListView* list() const noexcept { return m_list; }

signals:
    /// The user wants to choose a place for a group.
    void moveWanted(const UUID& groupID);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QWidget* makeHeader();
    void arrange();
    void connectList();
    void connectState();

    void showGroups();
    void showSelection();
    void storeSelection();
    void followSelection();
    void choose(const QModelIndex& index);
    void openMenu(const QModelIndex& index, const QPoint& globalPosition);

    bool answerKey(const QKeyEvent& event);
    void goIn(int row);
    void goOut(int row);
    bool answerClick(const QPoint& position);
    void setExpanded(int row, bool isExpanded);
    [[nodiscard]] QList<RowVerb> verbsOf(const QModelIndex& index);

    void drag(const QModelIndex& index);
    [[nodiscard]] std::optional<RowMark> dropPlaceAt(const QPoint& position) const;
    [[nodiscard]] std::optional<RowMark> groupDropPlaceAt(const QPoint& position, const UUID& groupID) const;
    void takeDrop(const std::set<UUID>& ids, const RowMark& place);

    AppState& m_state;
    GroupTreeModel* m_model;
    TextLabel* m_name;
    IconButton* m_add;
    RowListView* m_list;
    bool m_isShowing = false;  // a selection that is shown was not chosen
};
