// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/ListDifference.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

/// How one list of rows becomes another, announced so that a view keeps its place: rows that go, rows that come, or one
/// that moves. Most changes of a vault are one of these.
class RowChanges {
public:
    /// Rows `first` to `first + count - 1`, at their place at the time.
    struct Run {
        int first;
        int count;
    };

    /// One row that is elsewhere afterwards.
    struct Move {
        int from;
        int to;
    };

    /// Compares rows by `isSame(before, after)`. None where that would be many steps, as when a list is sorted
    /// anew or shows another group: then it is better announced as a new list.
    template <class Rows, class IsSame>
    [[nodiscard]] static std::optional<RowChanges> between(const Rows& before, const Rows& after, IsSame isSame);

    /// The runs of rows in which two lists of one length differ.
    template <class Rows, class Differs>
    [[nodiscard]] static std::vector<Run> runsWhere(const Rows& before, const Rows& after, Differs differs);

    std::vector<Run> removed;   // from the last to the first
    std::vector<Run> inserted;  // from the first to the last
    std::optional<Move> moved;  // then nothing else

private:
    static constexpr std::size_t mostRuns = 64;

    static void add(std::vector<Run>& runs, std::size_t row);
    static Run run(std::size_t first, std::size_t count) { return {static_cast<int>(first), static_cast<int>(count)}; }
    [[nodiscard]] bool areMany() const noexcept;
    [[nodiscard]] bool areOneMove() const noexcept;
};

inline void RowChanges::add(std::vector<Run>& runs, std::size_t row) {
    const int next = static_cast<int>(row);
    if (!runs.empty() && runs.back().first + runs.back().count == next)
        ++runs.back().count;
    else
        runs.push_back({next, 1});
}

template <class Rows, class Differs>
std::vector<RowChanges::Run> RowChanges::runsWhere(const Rows& before, const Rows& after, Differs differs) {
    std::vector<Run> runs;
    for (std::size_t row = 0; row < after.size(); ++row)
        if (differs(before[row], after[row]))
            add(runs, row);
    return runs;
}

/// More than is announced to a view one by one: rows that go and rows that come, other than by one move, or too many of
/// them.
inline bool RowChanges::areMany() const noexcept {
    if (removed.empty() || inserted.empty())
        return removed.size() + inserted.size() > mostRuns;
    return !areOneMove();
}

inline bool RowChanges::areOneMove() const noexcept {
    return removed.size() == 1 && inserted.size() == 1 && removed.front().count == 1 && inserted.front().count == 1;
}

template <class Rows, class IsSame>
std::optional<RowChanges> RowChanges::between(const Rows& before, const Rows& after, IsSame isSame) {
    RowChanges changes;
    ListDifference difference(before, after, isSame);
    while (const auto change = difference.next()) {
        if (change->removed > 0)
            changes.removed.push_back(run(change->before, change->removed));
        if (change->added > 0)
            changes.inserted.push_back(run(change->after, change->added));
        if (changes.areMany())
            return std::nullopt;
    }
    if (changes.areOneMove()) {
        const Move move{.from = changes.removed.front().first, .to = changes.inserted.front().first};
        if (!isSame(before[static_cast<std::size_t>(move.from)], after[static_cast<std::size_t>(move.to)]))
            return std::nullopt;
        changes = {};
        changes.moved = move;
        return changes;
    }
    std::ranges::reverse(changes.removed);
    return changes;
}
