// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <ranges>
#include <utility>

/// One stretch in which a list has become another: `removed` items from index `before` of the former list gave way to
/// `added` items from index `after` of the present one.
struct ListChange {
    std::size_t before;
    std::size_t removed;
    std::size_t after;
    std::size_t added;

    bool operator==(const ListChange&) const = default;
};

/// How a list became another, one change after the other from the front. Between two changes both have the same items.
///
/// The changes are few if they lie apart, or if one list is a part of the other. After many changes close together the
/// rest may be reported as replaced, item by item. Each change is found when it is asked for: a caller for whom they
/// become too many stops asking, and has paid for few more than it got.
///
/// Items are the same by `isSame(formerItem, presentItem)`. Both lists are borrowed.
template <std::ranges::forward_range Former, std::ranges::forward_range Present, class IsSame>
class ListDifference {
public:
    ListDifference(const Former& former, const Present& present, IsSame isSame)
        : m_former(former), m_present(present), m_isSame(std::move(isSame)) {}

    /// None after the last.
    [[nodiscard]] std::optional<ListChange> next();

private:
    // Changes that lie apart are found within so many items.
    static constexpr std::size_t usualLook = 64;

    /// Where one list is.
    template <class List>
    struct Cursor {
        explicit Cursor(const List& list)
            : item(std::ranges::begin(list)), left(static_cast<std::size_t>(std::ranges::size(list))) {}

        void advance() {
            ++item;
            ++index;
            --left;
        }
        void advance(std::size_t count) {
            std::ranges::advance(item, static_cast<std::ptrdiff_t>(count));
            index += count;
            left -= count;
        }

        std::ranges::iterator_t<const List> item;
        std::size_t index = 0;
        std::size_t left;
    };

    [[nodiscard]] bool isKept() const { return m_former.left > 0 && m_present.left > 0 && isSame(m_former, m_present); }
    [[nodiscard]] bool isSame(const auto& former, const auto& present) const {
        return m_isSame(*former.item, *present.item);
    }
    [[nodiscard]] std::pair<std::size_t, std::size_t> removedAndAdded();

    Cursor<Former> m_former;
    Cursor<Present> m_present;
    IsSame m_isSame;
    bool m_mayBePart = true;  // one list of the other
};

template <std::ranges::forward_range Former, std::ranges::forward_range Present, class IsSame>
std::optional<ListChange> ListDifference<Former, Present, IsSame>::next() {
    while (isKept()) {
        m_former.advance();
        m_present.advance();
    }
    if (m_former.left == 0 && m_present.left == 0)
        return std::nullopt;
    const auto [removed, added] = removedAndAdded();
    const ListChange change{.before = m_former.index, .removed = removed, .after = m_present.index, .added = added};
    m_former.advance(removed);
    m_present.advance(added);
    return change;
}

/// What is to be skipped until both lists go on with the same item, as few as possible.
template <std::ranges::forward_range Former, std::ranges::forward_range Present, class IsSame>
std::pair<std::size_t, std::size_t> ListDifference<Former, Present, IsSame>::removedAndAdded() {
    if (m_former.left == 0 || m_present.left == 0)
        return {m_former.left, m_present.left};
    // If one list is a part of the other, what is missing in a row is no more than the one is shorter in all.
    const auto look = [this](std::size_t left, std::size_t otherLeft) {
        const auto surplus = m_mayBePart && left > otherLeft ? left - otherLeft : 0;
        return std::min(left - 1, std::max(usualLook, surplus));
    };
    const auto formerLook = look(m_former.left, m_present.left);
    const auto presentLook = look(m_present.left, m_former.left);
    auto former = m_former;
    auto present = m_present;
    for (std::size_t count = 1; count <= std::max(formerLook, presentLook); ++count) {
        if (count <= formerLook) {
            former.advance();
            if (isSame(former, m_present))
                return {count, 0};
        }
        if (count <= presentLook) {
            present.advance();
            if (isSame(m_former, present))
                return {0, count};
        }
    }
    m_mayBePart = false;
    return {1, 1};
}
