// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/Environment.h"

#include <QObject>

class QAction;
class QMenu;
class QMenuBar;
class QWidget;

/// Every command of the program, with its key and the rule by which it is enabled: one action each, for the menus, the
/// toolbar's buttons and the keys.
class Commands : public QObject {
    Q_OBJECT

public:
    /// `window` is where panels stand over, and where the keys work.
    Commands(const Environment& environment, QWidget& window);

    void fill(QMenuBar& bar);

    [[nodiscard]] QAction* saving() const noexcept { return m_save; }
    [[nodiscard]] QAction* locking() const noexcept { return m_lock; }

private:
    QAction* make(const QString& text, const QKeySequence& key, void (Commands::*act)());
    void showEnabled();

    void createDatabase();
    void openDatabase();
    void save();
    void saveAs();
    void lock();
    void closeDatabase();
    void undo();
    void redo();
    void focusSearch();

    Environment m_environment;
    AppState& m_state;
    QWidget& m_window;
    QAction* m_create;
    QAction* m_open;
    QAction* m_save;
    QAction* m_saveAs;
    QAction* m_lock;
    QAction* m_close;
    QAction* m_quit;
    QAction* m_undo;
    QAction* m_redo;
    QAction* m_search;
};
