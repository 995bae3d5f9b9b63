// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/FailureText.h"
#include "app/state/GroupTree.h"

void AppState::edit(std::string label, const std::function<void(KdbxDatabase&)>& body) {
    if (!m_database)
        return;
    const Step step(*this);
    const auto recorded = m_undoStack.size();
    std::deque<Snapshot> redoable;
    try {
        auto database = *m_database;
        m_undoStack.push_back({database, std::move(label), m_sort.column});
        m_redoStack.swap(redoable);
        body(database);
        assignDatabase(std::move(database));
        ++m_changeCount;
        assign(m_isDirty, true, &AppState::isDirtyChanged);
        announceChange(Change::Kind::made, m_undoStack.back().label);
        if (m_undoStack.size() > undoLimit)
            m_undoStack.pop_front();
    } catch (...) {
        // The change would go too deep, or memory ran short: vault and steps then stand as they were.
        if (m_undoStack.size() > recorded)
            m_undoStack.pop_back();
        if (!redoable.empty())
            m_redoStack.swap(redoable);
        setLastError(failureText());
    }
    refreshUndoLabels();
}

/// A change that is no step: it can't be undone, and it is written along with a later save only.
void AppState::amend(const std::function<void(KdbxDatabase&)>& body) {
    if (!m_database)
        return;
    const Step step(*this);
    try {
        auto database = *m_database;
        body(database);
        assignDatabase(std::move(database));
    } catch (...) {
        setLastError(failureText());
    }
}

void AppState::undo() {
    travel(m_undoStack, m_redoStack, Change::Kind::undone);
}

void AppState::redo() {
    travel(m_redoStack, m_undoStack, Change::Kind::redone);
}

void AppState::travel(std::deque<Snapshot>& from, std::deque<Snapshot>& to, Change::Kind kind) {
    if (from.empty())
        return;
    auto snapshot = std::move(from.back());
    from.pop_back();
    if (!m_database)
        return;
    const Step step(*this);
    // A step of a vault that is gone has nothing to bring back, and must not bring it into this one.
    if (!snapshot.database) {
        to.push_back(std::move(snapshot));
        return refreshUndoLabels();
    }
    // A step keeps its name while it travels between the stacks.
    to.push_back({*m_database, snapshot.label, m_sort.column});
    assignDatabase(std::move(snapshot.database));
    setSort({.column = snapshot.sortColumn, .ascending = m_sort.ascending});
    ++m_changeCount;
    assign(m_isDirty, true, &AppState::isDirtyChanged);
    announceChange(kind, to.back().label);
    pruneSelection();
    refreshUndoLabels();
    noteTravel(to.back(), &from == &m_undoStack);
}

void AppState::announceChange(Change::Kind kind, const std::string& label) {
    m_lastChange = {kind, label};
    announce(&AppState::lastChangeMade);
}

void AppState::emptyUndoStacks() {
    m_undoStack.clear();
    m_redoStack.clear();
    refreshUndoLabels();
}

/// The steps of a session that was dropped keep their names. Its vaults are as secret as the open one was.
void AppState::dropVaultsOfSteps() noexcept {
    for (auto* const stack : {&m_undoStack, &m_redoStack})
        for (auto& step : *stack)
            step.database.reset();
}

void AppState::refreshUndoLabels() {
    const auto lastLabel = [](const std::deque<Snapshot>& stack) {
        return stack.empty() ? std::nullopt : std::optional(stack.back().label);
    };
    assign(m_undoLabel, lastLabel(m_undoStack), &AppState::undoLabelChanged);
    assign(m_redoLabel, lastLabel(m_redoStack), &AppState::redoLabelChanged);
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
