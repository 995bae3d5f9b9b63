// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

#include <cstddef>
#include <iterator>
#include <vector>

/// A walk over a group and all groups below it: depth first, each group before its subgroups, in stored order.
///
/// It is a range, and a loop that wants more than the groups asks the walk, which is always at the loop's group:
///
///     GroupWalk walk(root);
///     for (const auto& group : walk)
///         if (!group.isExpanded)
///             walk.skipSubgroups();
///
/// The tree must not change meanwhile, but through `WritableGroupWalk`. No tree is too deep: the path is kept in a
/// list and not on the stack.
class GroupWalk {
public:
    class Iterator;

    explicit GroupWalk(const KdbxGroup& root) { m_path.push_back({.group = &root}); }

    /// The rest of the walk, the current group included. Iterators are handles of the walk: all of them advance it.
    [[nodiscard]] Iterator begin() noexcept;
    [[nodiscard]] static std::default_sentinel_t end() noexcept { return {}; }

    [[nodiscard]] bool isAtEnd() const noexcept { return m_path.empty(); }

    // What follows asks for a group to be at.

    [[nodiscard]] const KdbxGroup& group() const noexcept { return *m_path.back().group; }

    /// How many groups the path to the current one has, both ends included: 1 for the root.
    [[nodiscard]] std::size_t level() const noexcept { return m_path.size(); }

    /// The groups from the root down to the current one, both included.
    [[nodiscard]] std::vector<const KdbxGroup*> path() const;

    /// Goes on to the next group, or to the end.
    void advance();

    /// Leaves out what is below the current group.
    void skipSubgroups() noexcept { m_path.back().nextSubgroup = group().groups.size(); }

protected:
    struct Step {
        const KdbxGroup* group;
        std::size_t nextSubgroup = 0;
        KdbxGroup* writable = nullptr;  // the same group, once it was asked for
    };

    std::vector<Step> m_path;  // from the root down to the current group; empty at the end
};

/// A walk that hands out the groups for writing.
class WritableGroupWalk : public GroupWalk {
public:
    explicit WritableGroupWalk(KdbxGroup& root) : GroupWalk(root) { m_path.front().writable = &root; }

    /// The current group for writing. It no longer shares anything with copies of the tree, nor do the groups on the
    /// path to it; the others go on sharing. The walk goes on through what is its subgroups then.
    [[nodiscard]] KdbxGroup& writableGroup();
};

/// Where a walk is, as standard algorithms and range-based loops ask for it.
class GroupWalk::Iterator {
public:
    using iterator_concept = std::input_iterator_tag;
    using value_type = KdbxGroup;
    using difference_type = std::ptrdiff_t;

    explicit Iterator(GroupWalk& walk) noexcept : m_walk(&walk) {}

    const KdbxGroup& operator*() const noexcept { return m_walk->group(); }
    Iterator& operator++() {
        m_walk->advance();
        return *this;
    }
    void operator++(int) { m_walk->advance(); }
    friend bool operator==(const Iterator& it, std::default_sentinel_t) noexcept { return it.m_walk->isAtEnd(); }

private:
    GroupWalk* m_walk;
};

inline GroupWalk::Iterator GroupWalk::begin() noexcept {
    return Iterator(*this);
}

inline std::vector<const KdbxGroup*> GroupWalk::path() const {
    std::vector<const KdbxGroup*> groups;
    groups.reserve(m_path.size());
    for (const auto& step : m_path)
        groups.push_back(step.group);
    return groups;
}

inline void GroupWalk::advance() {
    while (!m_path.empty()) {
        auto& [group, nextSubgroup, writable] = m_path.back();
        if (nextSubgroup < group->groups.size()) {
            m_path.push_back({.group = &group->groups[nextSubgroup++]});
            return;
        }
        m_path.pop_back();
    }
}

inline KdbxGroup& WritableGroupWalk::writableGroup() {
    for (std::size_t depth = 1; depth < m_path.size(); ++depth) {
        const auto& parent = m_path[depth - 1];
        auto& step = m_path[depth];
        if (!step.writable)
            step.group = step.writable = &parent.writable->groups.mutableAt(parent.nextSubgroup - 1);
    }
    return *m_path.back().writable;
}
