// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/UUID.h"

#include <cstddef>
#include <initializer_list>
#include <vector>

/// Identifiers in no order, for tens of thousands of questions in a row. All lie in one piece of memory, so that to
/// fill the set, to ask it and to let it go takes a fraction of what it takes with a node for each.
class UUIDSet {
public:
    UUIDSet() = default;
    UUIDSet(std::initializer_list<UUID> ids) : UUIDSet(ids.begin(), ids.end(), ids.size()) {}
    template <class Iterator>
    UUIDSet(Iterator first, Iterator last, std::size_t count) {
        reserve(count);
        for (; first != last; ++first)
            insert(*first);
    }

    /// Makes room for so many at once.
    void reserve(std::size_t count);

    /// Whether it was not there.
    bool insert(const UUID& id);
    /// Whether it was there.
    bool erase(const UUID& id);

    [[nodiscard]] bool contains(const UUID& id) const noexcept;
    [[nodiscard]] std::size_t size() const noexcept { return m_count + (m_hasZero ? 1 : 0); }
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }

    friend bool operator==(const UUIDSet& a, const UUIDSet& b) noexcept;

private:
    [[nodiscard]] std::size_t homeOf(const UUID& id) const noexcept;
    [[nodiscard]] std::size_t slotOf(const UUID& id) const noexcept;
    [[nodiscard]] std::size_t next(std::size_t slot) const noexcept { return (slot + 1) & (m_slots.size() - 1); }

    // A power of two of them, at most half of which are taken; zeros are free. Each identifier is in the first
    // slot that is free from its own on.
    std::vector<UUID> m_slots;
    std::size_t m_count = 0;  // in the slots
    bool m_hasZero = false;
};
