// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/commands/Command.h"

#include <functional>

class AppState;
class QMenu;
class QWidget;

/// Fills the menu of a row, which is deleted when it closes, and closes when the vault is locked.
class RowMenu {
public:
    RowMenu(AppState& state, QWidget* parent);

    QAction* add(const Command& command, const std::function<void()>& act) { return add(command.text(), act); }
    QAction* add(const QString& text, const std::function<void()>& act);
    void addLine();

    [[nodiscard]] QMenu* menu() const noexcept { return m_menu; }

private:
    AppState& m_state;
    QMenu* m_menu;
};
