// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

/// How one list of rows becomes another, told so that a view keeps its place: rows that go, rows that come, or one that
/// moves. Most changes of a vault are one of these.
class RowChanges {
public:
    /// Rows `first` to `first + count - 1`, at their place at the time.
    struct Run {
        int first;
        int count;
    };

    /// One row that stands elsewhere afterwards.
    struct Move {
        int from;
        int to;
    };

    /// Compares rows by `isSame(before, after)`. None where it would take many steps to tell, as when a list is sorted
    /// anew or shows another group: then it is better told as a new list.
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
    template <class Some, class All, class IsSame>
    static bool findMissing(std::vector<Run>& runs, Some some, Some someEnd, All all, All allEnd, std::size_t row,
                            IsSame isSame);
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

/// The runs of what `all` has between the elements of `some`; false where `some` has others, or the runs are too many.
template <class Some, class All, class IsSame>
bool RowChanges::findMissing(std::vector<Run>& runs, Some some, Some someEnd, All all, All allEnd, std::size_t row,
                             IsSame isSame) {
    for (; all != allEnd; ++all, ++row) {
        if (some != someEnd && isSame(*some, *all))
            ++some;
        else
            add(runs, row);
        if (runs.size() > mostRuns)
            return false;
    }
    return some == someEnd;
}

template <class Rows, class IsSame>
std::optional<RowChanges> RowChanges::between(const Rows& before, const Rows& after, IsSame isSame) {
    auto [oldFirst, newFirst] = std::mismatch(before.begin(), before.end(), after.begin(), after.end(), isSame);
    auto oldEnd = before.end();
    auto newEnd = after.end();
    while (oldEnd != oldFirst && newEnd != newFirst && isSame(*(oldEnd - 1), *(newEnd - 1))) {
        --oldEnd;
        --newEnd;
    }
    const auto start = static_cast<std::size_t>(oldFirst - before.begin());
    const auto oldCount = oldEnd - oldFirst;
    const auto newCount = newEnd - newFirst;
    RowChanges changes;
    if (oldCount > newCount) {
        if (!findMissing(changes.removed, newFirst, newEnd, oldFirst, oldEnd, start, isSame))
            return std::nullopt;
        std::reverse(changes.removed.begin(), changes.removed.end());
        return changes;
    }
    if (oldCount < newCount) {
        if (!findMissing(changes.inserted, oldFirst, oldEnd, newFirst, newEnd, start, isSame))
            return std::nullopt;
        return changes;
    }
    if (oldCount == 0)
        return changes;
    const int first = static_cast<int>(start);
    const int last = first + static_cast<int>(oldCount) - 1;
    if (isSame(*oldFirst, *(newEnd - 1)) && std::equal(oldFirst + 1, oldEnd, newFirst, newEnd - 1, isSame)) {
        changes.moved = {first, last};
        return changes;
    }
    if (isSame(*(oldEnd - 1), *newFirst) && std::equal(oldFirst, oldEnd - 1, newFirst + 1, newEnd, isSame)) {
        changes.moved = {last, first};
        return changes;
    }
    return std::nullopt;
}
