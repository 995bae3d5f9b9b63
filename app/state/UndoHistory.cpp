// SPDX-License-Identifier: MIT
#include "app/state/UndoHistory.h"

#include <utility>

std::optional<UndoHistory::Snapshot> UndoHistory::travel(Direction direction,
                                                         const std::optional<KdbxDatabase>& present,
                                                         EntrySort::Column sortColumn) {
    auto& from = direction == Direction::undo ? m_undoStack : m_redoStack;
    auto& to = direction == Direction::undo ? m_redoStack : m_undoStack;
    if (from.empty())
        return std::nullopt;
    auto snapshot = std::move(from.back());
    from.pop_back();
    if (!present)
        return std::nullopt;
    if (snapshot.database)
        to.push_back({present, snapshot.label, sortColumn});
    else
        to.push_back(snapshot);
    return snapshot;
}

void UndoHistory::clear() noexcept {
    m_undoStack.clear();
    m_redoStack.clear();
}

void UndoHistory::dropVaults() noexcept {
    for (auto* const stack : {&m_undoStack, &m_redoStack})
        for (auto& step : *stack)
            step.database.reset();
}

std::optional<std::string> UndoHistory::lastLabel(const Stack& stack) {
    return stack.empty() ? std::nullopt : std::optional(stack.back().label);
}

UndoHistory::Recording::Recording(UndoHistory& history, Snapshot before) : m_history(history) {
    m_history.m_undoStack.push_back(std::move(before));
    m_history.m_redoStack.swap(m_redoStack);
}

UndoHistory::Recording::~Recording() {
    if (m_isKept)
        return;
    m_history.m_undoStack.pop_back();
    m_history.m_redoStack.swap(m_redoStack);
}

void UndoHistory::Recording::keep() noexcept {
    m_isKept = true;
    if (m_history.m_undoStack.size() > undoLimit)
        m_history.m_undoStack.pop_front();
}
