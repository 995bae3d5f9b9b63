// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/AppState.h"
#include "app/state/Environment.h"
#include "app/ui/commands/Command.h"
#include "core/clipboard/Observers.h"

#include <QObject>

#include <filesystem>
#include <optional>
#include <set>
#include <utility>
#include <vector>

class QMenu;
class QMenuBar;
class QWidget;
class TextCommands;

/// What is to be moved to another group: entries, or one group.
struct MoveSubject {
    std::set<UUID> entryIDs;
    std::optional<UUID> groupID;
};

/// The table's commands at work in the window: one action each for the menu bar and the keys, and the rules by which
/// they are enabled.
class Commands : public QObject {
    Q_OBJECT

public:
    /// `window` is where panels stand over, and where the keys work.
    Commands(const Environment& environment, QWidget& window);

    void fill(QMenuBar& bar);
    /// The toolbar's menu, of what is done most to the selected entry.
    void fillMore(QMenu& menu);

    [[nodiscard]] QAction* action(Command::ID id) const;
    /// What can be done in each window of the program.
    [[nodiscard]] QList<QAction*> everywhere() const;

    /// Names the command that hides the column of the groups, or shows it again.
    void showGroupColumn(bool isShown) const;
    /// The list of the groups: while the keyboard is among them, the commands for the order are for them.
    void setGroupList(const QWidget* list) noexcept { m_groupList = list; }

    /// Says that a sheet is shown that is no route's. What lies behind a sheet is out of its commands' reach.
    void setCovered(bool isCovered);
    /// Says that the session is waited for, during which most commands are out of reach. They do nothing from its start
    /// on, and look so once it is long enough to be shown.
    void setWaiting(bool isWaiting);

    // What the table's rows ask for.
    [[nodiscard]] QWidget& window() const noexcept { return m_window; }
    void createDatabase();
    void openDatabase();
    /// One that was asked for by its name, and may be away.
    void openDatabase(const std::filesystem::path& file);
    void save();
    void saveAs();
    void lock();
    void closeDatabase();
    void clearClipboard();
    void moveEntries();
    void moveGroup();
    void shift(AppState::Shift direction);

    // The rules of its rows.
    [[nodiscard]] bool canSave() const;
    [[nodiscard]] bool hasDatabase() const;
    [[nodiscard]] bool isUnlocked() const;
    [[nodiscard]] bool canUndo() const;
    [[nodiscard]] bool canRedo() const;
    [[nodiscard]] bool isInReach() const;
    [[nodiscard]] bool hasFocusedEntry() const;
    [[nodiscard]] bool hasSelection() const;
    [[nodiscard]] bool hasMovableGroup() const;
    [[nodiscard]] bool canShift() const;
    [[nodiscard]] bool showsNoRoute() const;
    [[nodiscard]] bool losesNoForm() const;

signals:
    /// A command is about to end the unlocked session; what it shows is still there.
    void sessionWillEnd();
    void settingsWanted();
    void groupColumnToggled();
    void columnWidthsWanted();
    void aboutWanted();
    /// A sheet is wanted that asks where to.
    void moveWanted(const MoveSubject& subject);

private:
    void makeAction(const Command& command);
    void perform(const Command& command);
    void connectState();
    void followFocus(const QWidget* now);
    [[nodiscard]] QList<QAction*> actionsOf(Command::Place::Menu menu, int block) const;
    [[nodiscard]] bool isHeldBack(const Command& command) const;
    void showEnabled();
    void showUndoLabels();
    [[nodiscard]] std::optional<UUID> movableGroup() const;

    Environment m_environment;
    AppState& m_state;
    QWidget& m_window;
    TextCommands* m_text;
    std::vector<std::pair<const Command*, QAction*>> m_actions;  // those of the menu bar, in its order
    const QWidget* m_groupList = nullptr;
    bool m_isCovered = false;
    bool m_isWaiting = false;
    bool m_isAmongGroups = false;    // also while a menu has the keyboard for a moment
    bool m_hasFocusedEntry = false;  // as of the last change: looking for it walks the tree
    Observers::Subscription m_countdown;
};
