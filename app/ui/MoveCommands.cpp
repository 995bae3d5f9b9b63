// SPDX-License-Identifier: MIT
#include "app/ui/MoveCommands.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>

MoveCommands::MoveCommands(AppState& state, QWidget& window)
    : QObject(&window),
      m_state(state),
      m_window(window),
      m_entriesTo(make(tr("Gruba Taşı…"), Qt::CTRL | Qt::SHIFT | Qt::Key_M, &MoveCommands::moveEntries)),
      m_groupTo(make(tr("Grubu Taşı…"), {}, &MoveCommands::moveGroup)),
      m_up(make(tr("Yukarı Taşı"), Qt::ALT | Qt::Key_Up, &MoveCommands::shiftUp)),
      m_down(make(tr("Aşağı Taşı"), Qt::ALT | Qt::Key_Down, &MoveCommands::shiftDown)) {
    for (auto* const action : {m_up, m_down})
        action->setAutoRepeat(true);  // a key that is held down goes on row by row
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { followFocus(now); });
}

QAction* MoveCommands::make(const QString& text, const QKeySequence& key, void (MoveCommands::*act)()) {
    auto* const action = new QAction(text, this);
    action->setShortcut(key);
    action->setAutoRepeat(false);
    connect(action, &QAction::triggered, this, act);
    return action;
}

void MoveCommands::followFocus(const QWidget* now) {
    if (!now || now->window() != &m_window || qobject_cast<const QMenuBar*>(now) || qobject_cast<const QMenu*>(now))
        return;
    m_isAmongGroups = now == m_groupList;
    showEnabled(m_isInReach);
}

void MoveCommands::showEnabled(bool isInReach) {
    m_isInReach = isInReach;
    m_entriesTo->setEnabled(isInReach && !m_state.selectedEntryIDs().empty());
    m_groupTo->setEnabled(isInReach && movableGroup());
    for (auto* const action : {m_up, m_down})
        action->setEnabled(isInReach && canShift());
}

/// The selected group; none where it is the root.
std::optional<UUID> MoveCommands::movableGroup() const {
    const auto& id = m_state.selectedGroupID();
    return id && m_state.root() && *id != m_state.root()->id ? id : std::nullopt;
}

bool MoveCommands::canShift() const {
    return m_isAmongGroups ? movableGroup().has_value() : !m_state.selectedEntryIDs().empty() && !m_state.isSearching();
}

void MoveCommands::moveEntries() {
    emit targetWanted({.entryIDs = m_state.selectedEntryIDs(), .groupID = std::nullopt});
}

void MoveCommands::moveGroup() {
    emit targetWanted({.entryIDs = {}, .groupID = movableGroup()});
}

void MoveCommands::shift(AppState::Shift direction) {
    if (!m_isAmongGroups)
        m_state.shiftEntries(std::set(m_state.selectedEntryIDs()), direction);
    else if (const auto id = movableGroup())
        m_state.shiftGroup(*id, direction);
}
