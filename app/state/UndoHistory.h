// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/EntrySort.h"
#include "core/model/KdbxDatabase.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>

/// The steps that can be undone and redone, each with the whole vault on its other side. It knows no vault but those:
/// the present one is handed in.
class UndoHistory {
public:
    /// The vault on the other side of a step; none once that vault is no longer the one that is open.
    struct Snapshot {
        std::optional<KdbxDatabase> database;
        std::string label;
        EntrySort::Column sortColumn;
    };

    enum class Direction : bool { undo, redo };

    class Recording;

    [[nodiscard]] bool canUndo() const noexcept { return !m_undoStack.empty(); }
    [[nodiscard]] bool canRedo() const noexcept { return !m_redoStack.empty(); }

    /// The name of the step that comes next in either direction.
    [[nodiscard]] std::optional<std::string> undoLabel() const { return lastLabel(m_undoStack); }
    [[nodiscard]] std::optional<std::string> redoLabel() const { return lastLabel(m_redoStack); }

    /// Gives the snapshot to go back or forth to, and keeps the present vault for the way back, under the same name.
    /// A step without a vault only changes sides. None where there is no step, or no present vault: then the step is
    /// lost.
    std::optional<Snapshot> travel(Direction direction, const std::optional<KdbxDatabase>& present,
                                   EntrySort::Column sortColumn);

    void clear() noexcept;
    /// Leaves the steps their names alone, for a session that is dropped: its vaults are as secret as the open one was.
    void dropVaults() noexcept;

private:
    using Stack = std::deque<Snapshot>;  // newest last

    static constexpr std::size_t undoLimit = 50;

    static std::optional<std::string> lastLabel(const Stack& stack);

    Stack m_undoStack;
    Stack m_redoStack;
};

/// A step while it is made. It can be undone from the start, and there is nothing to redo any more; without `keep` all
/// is as it was before once the recording ends.
class UndoHistory::Recording {
public:
    Recording(UndoHistory& history, Snapshot before);
    ~Recording();
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    /// The step was made. The oldest one goes where there are too many.
    void keep() noexcept;

private:
    UndoHistory& m_history;
    Stack m_redoStack;  // as it was before
    bool m_isKept = false;
};
