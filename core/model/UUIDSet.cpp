// SPDX-License-Identifier: MIT
#include "core/model/UUIDSet.h"

#include <algorithm>
#include <bit>
#include <utility>

void UUIDSet::reserve(std::size_t count) {
    if (2 * count <= m_slots.size())
        return;
    const auto former = std::exchange(m_slots, std::vector<UUID>(std::bit_ceil(2 * count)));
    for (const auto& id : former)
        if (!id.isZero())
            m_slots[slotOf(id)] = id;
}

bool UUIDSet::insert(const UUID& id) {
    if (id.isZero())
        return !std::exchange(m_hasZero, true);
    if (2 * (m_count + 1) > m_slots.size())
        reserve(std::max<std::size_t>(8, 2 * m_count));
    auto& slot = m_slots[slotOf(id)];
    if (!slot.isZero())
        return false;
    slot = id;
    ++m_count;
    return true;
}

bool UUIDSet::erase(const UUID& id) {
    if (id.isZero())
        return std::exchange(m_hasZero, false);
    auto hole = m_count == 0 ? 0 : slotOf(id);
    if (m_count == 0 || m_slots[hole].isZero())
        return false;
    // Those behind move up to the free slot, but not past their own.
    const auto distance = [this](std::size_t from, std::size_t to) { return (to - from) & (m_slots.size() - 1); };
    for (auto slot = next(hole); !m_slots[slot].isZero(); slot = next(slot)) {
        if (distance(homeOf(m_slots[slot]), slot) < distance(hole, slot))
            continue;
        m_slots[hole] = m_slots[slot];
        hole = slot;
    }
    m_slots[hole] = UUID();
    --m_count;
    return true;
}

bool UUIDSet::contains(const UUID& id) const noexcept {
    return id.isZero() ? m_hasZero : m_count > 0 && !m_slots[slotOf(id)].isZero();
}

bool operator==(const UUIDSet& a, const UUIDSet& b) noexcept {
    return a.size() == b.size() && a.m_hasZero == b.m_hasZero &&
           std::ranges::all_of(a.m_slots, [&](const UUID& id) { return id.isZero() || b.contains(id); });
}

std::size_t UUIDSet::homeOf(const UUID& id) const noexcept {
    return std::hash<UUID>()(id) & (m_slots.size() - 1);
}

/// The slot that has the identifier, or else the free one that would.
std::size_t UUIDSet::slotOf(const UUID& id) const noexcept {
    auto slot = homeOf(id);
    while (!m_slots[slot].isZero() && m_slots[slot] != id)
        slot = next(slot);
    return slot;
}
