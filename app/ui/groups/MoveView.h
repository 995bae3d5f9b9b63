// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/commands/Commands.h"
#include "app/ui/components/Sheet.h"
#include "app/ui/groups/GroupTreeModel.h"

class RowListView;

/// The sheet that asks for the group that entries, or a group, are to be moved to: the whole tree to choose from, but
/// for what moves.
class MoveView : public SheetScaffold {
    Q_OBJECT

public:
    MoveView(AppState& state, MoveSubject subject, QWidget* parent = nullptr);

signals:
    /// The user is done, or what was to be moved has gone.
    void dismissed();

private:
    void arrange();
    void connectControls();
    void showTargets();
    void showConfirm();
    [[nodiscard]] std::optional<GroupTreeModel::Moving> movingGroup() const;
    [[nodiscard]] QString subjectText() const;
    [[nodiscard]] std::optional<UUID> present() const;
    [[nodiscard]] std::optional<UUID> chosen() const;
    [[nodiscard]] bool isSomethingElsewhere(const UUID& groupID) const;
    void move();

    AppState& m_state;
    MoveSubject m_subject;
    GroupTreeModel* m_model;
    RowListView* m_list;
};
