// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/AppState.h"

#include <QList>
#include <QObject>

#include <optional>
#include <set>

class QAction;
class QWidget;

/// What is to be moved to another group: entries, or one group.
struct MoveSubject {
    std::set<UUID> entryIDs;
    std::optional<UUID> groupID;
};

/// The commands that move entries and groups without a mouse: to another group, and one row up or down. Those for the
/// order are for the groups while the keyboard is among them, and for the selected entries everywhere else.
class MoveCommands : public QObject {
    Q_OBJECT

public:
    MoveCommands(AppState& state, QWidget& window);

    [[nodiscard]] QList<QAction*> all() const { return {m_entriesTo, m_groupTo, m_up, m_down}; }

    /// The list of the groups.
    void setGroupList(const QWidget* list) noexcept { m_groupList = list; }
    /// Whether the columns can be worked in, and something may have been selected there.
    void showEnabled(bool isInReach);

signals:
    /// A sheet is wanted that asks where to.
    void targetWanted(const MoveSubject& subject);

private:
    QAction* make(const QString& text, const QKeySequence& key, void (MoveCommands::*act)());
    void followFocus(const QWidget* now);
    [[nodiscard]] std::optional<UUID> movableGroup() const;
    [[nodiscard]] bool canShift() const;
    void moveEntries();
    void moveGroup();
    void shiftUp() { shift(AppState::Shift::up); }
    void shiftDown() { shift(AppState::Shift::down); }
    void shift(AppState::Shift direction);

    AppState& m_state;
    QWidget& m_window;
    const QWidget* m_groupList = nullptr;
    bool m_isInReach = false;
    bool m_isAmongGroups = false;  // also while a menu has the keyboard for a moment
    QAction* m_entriesTo;
    QAction* m_groupTo;
    QAction* m_up;
    QAction* m_down;
};
