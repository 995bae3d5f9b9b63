// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/Environment.h"
#include "core/clipboard/Observers.h"

#include <QKeySequence>
#include <QList>
#include <QObject>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

class MoveCommands;
class QAction;
class QMenu;
class QMenuBar;
class QWidget;
class TextCommands;
class UUID;

/// Every command of the program, with its key and the rule by which it is enabled: one action each, for the menus, the
/// toolbar's buttons and the keys.
class Commands : public QObject {
    Q_OBJECT

public:
    /// `window` is where panels stand over, and where the keys work.
    Commands(const Environment& environment, QWidget& window);

    void fill(QMenuBar& bar);
    /// The toolbar's menu, of what is done most to the selected entry.
    void fillMore(QMenu& menu);

    [[nodiscard]] QAction* saving() const noexcept { return m_save; }
    [[nodiscard]] QAction* locking() const noexcept { return m_lock; }
    [[nodiscard]] QAction* addingEntry() const noexcept { return m_newEntry; }

    [[nodiscard]] MoveCommands* moving() const noexcept { return m_moves; }

    /// What can be done in each window of the program.
    [[nodiscard]] QList<QAction*> everywhere() const { return {m_lock, m_quit}; }

    /// Names the command that hides the column of the groups, or shows it again.
    void showGroupColumn(bool isShown);

    /// Tells of a sheet that is no route's. What lies behind a sheet is out of its commands' reach.
    void setCovered(bool isCovered);
    /// Tells of a wait for the session, in which most commands are out of reach. They do nothing from its start on, and
    /// look so once it is long enough to be shown.
    void setWaiting(bool isWaiting);

signals:
    /// A command is about to end the unlocked session; what it shows is still there.
    void sessionWillEnd();
    void settingsWanted();
    void groupColumnToggled();
    void columnWidthsWanted();
    void aboutWanted();

private:
    using Rule = bool (Commands::*)() const;

    void makeFileCommands();
    void makeEditCommands();
    void makeEntryCommands();
    void makeOtherCommands();
    QAction* make(const QString& text, const QList<QKeySequence>& keys, Rule rule, std::function<void()> act);
    void connectState();
    [[nodiscard]] bool isHeldBack(const QAction* action) const;
    void showEnabled();
    void showUndoLabels();

    // The rules.
    [[nodiscard]] bool always() const { return true; }
    [[nodiscard]] bool canSave() const;
    [[nodiscard]] bool hasDatabase() const;
    [[nodiscard]] bool isUnlocked() const;
    [[nodiscard]] bool canUndo() const;
    [[nodiscard]] bool canRedo() const;
    [[nodiscard]] bool isInReach() const;
    [[nodiscard]] bool hasFocusedEntry() const;
    [[nodiscard]] bool hasSelection() const;
    [[nodiscard]] bool showsNoRoute() const;
    [[nodiscard]] bool losesNoForm() const;

    void createDatabase();
    void openDatabase();
    void save();
    void saveAs();
    void lock();
    void closeDatabase();
    void showNewEntry();
    void showNewGroup();
    void showEditor();
    [[nodiscard]] std::optional<UUID> groupForNew() const;

    Environment m_environment;
    AppState& m_state;
    QWidget& m_window;
    TextCommands* m_text;
    MoveCommands* m_moves;
    std::vector<std::pair<QAction*, Rule>> m_rules;
    bool m_isCovered = false;
    bool m_isWaiting = false;
    bool m_hasFocusedEntry = false;  // as of the last change: looking for it walks the tree

    QAction* m_create = nullptr;
    QAction* m_open = nullptr;
    QAction* m_save = nullptr;
    QAction* m_saveAs = nullptr;
    QAction* m_lock = nullptr;
    QAction* m_close = nullptr;
    QAction* m_quit = nullptr;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QAction* m_settings = nullptr;
    QAction* m_copyUsername = nullptr;
    QAction* m_copyPassword = nullptr;
    QAction* m_copyURL = nullptr;
    QAction* m_autoType = nullptr;
    QAction* m_openURL = nullptr;
    QAction* m_newEntry = nullptr;
    QAction* m_newGroup = nullptr;
    QAction* m_edit = nullptr;
    QAction* m_delete = nullptr;
    QAction* m_generate = nullptr;
    QAction* m_clearClipboard = nullptr;
    QAction* m_search = nullptr;
    QAction* m_groupColumn = nullptr;
    QAction* m_columnWidths = nullptr;
    QAction* m_about = nullptr;
    Observers::Subscription m_countdown;
};
