// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/FailureText.h"
#include "app/state/GroupTree.h"

void AppState::edit(std::string label, const std::function<void(KdbxDatabase&)>& body) {
    if (!m_database)
        return;
    const Step step(m_signals);
    try {
        auto database = *m_database;
        UndoHistory::Recording recording(m_history, {database, label, m_sort.column});
        body(database);
        assignDatabase(std::move(database));
        recording.keep();
        ++m_changeCount;
        assign(m_isDirty, true, &AppState::isDirtyChanged);
        announceChange(Change::Kind::made, label);
    } catch (...) {
        // The change would go too deep, or memory ran short. The vault and its history are as they were.
        setLastError(failureText());
    }
    refreshUndoLabels();
}

/// A change that is no step: it can't be undone, and it is written along with a later save only.
void AppState::amend(const std::function<void(KdbxDatabase&)>& body) {
    if (!m_database)
        return;
    const Step step(m_signals);
    try {
        auto database = *m_database;
        body(database);
        assignDatabase(std::move(database));
    } catch (...) {
        setLastError(failureText());
    }
}

void AppState::undo() {
    travel(UndoHistory::Direction::undo);
}

void AppState::redo() {
    travel(UndoHistory::Direction::redo);
}

void AppState::travel(UndoHistory::Direction direction) {
    auto snapshot = m_history.travel(direction, m_database, m_sort.column);
    if (!snapshot)
        return;
    const Step step(m_signals);
    // A step of a vault that is gone has nothing to bring back, and must not bring it into this one.
    if (!snapshot->database)
        return refreshUndoLabels();
    assignDatabase(std::move(snapshot->database));
    setSort({.column = snapshot->sortColumn, .ascending = m_sort.ascending});
    ++m_changeCount;
    assign(m_isDirty, true, &AppState::isDirtyChanged);
    announceChange(direction == UndoHistory::Direction::undo ? Change::Kind::undone : Change::Kind::redone,
                   snapshot->label);
    pruneSelection();
    refreshUndoLabels();
    noteTravel(snapshot->label, direction);
}

void AppState::announceChange(Change::Kind kind, const std::string& label) {
    m_lastChange = {kind, label};
    m_signals.send(&AppState::lastChangeMade);
}

void AppState::refreshUndoLabels() {
    assign(m_undoLabel, m_history.undoLabel(), &AppState::undoLabelChanged);
    assign(m_redoLabel, m_history.redoLabel(), &AppState::redoLabelChanged);
}

void AppState::pruneSelection() {
    if (!m_database)
        return;
    const auto& root = m_database->root;
    const auto found = GroupTree::findEntries(root, m_selectedEntryIDs);
    if (found.size() < m_selectedEntryIDs.size()) {
        std::set<UUID> entries;
        for (const auto* entry : found)
            entries.insert(entry->id);
        setSelectedEntryIDs(std::move(entries));
    }
    if (m_selectedGroupID && !GroupTree::findGroup(root, *m_selectedGroupID))
        setSelectedGroupID(root.id);
}
