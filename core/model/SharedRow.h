// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/SharedNode.h"

#include <algorithm>
#include <bit>
#include <memory>
#include <new>
#include <span>

/// Children in a row, each shared with other rows, and beside each a number for the owner's use.
/// All lies in one piece of memory, the numbers first, so that a search by them runs through a few cache lines.
/// A row is shared itself; `own` comes before every change.
template <class Child>
class SharedRow : public SharedCount {
public:
    using Number = std::uint32_t;

    SharedRow(const SharedRow&) = delete;
    SharedRow& operator=(const SharedRow&) = delete;

    /// An empty row with room for `capacity` children.
    [[nodiscard]] static SharedNode<SharedRow> withRoomFor(std::size_t capacity) {
        auto* memory = static_cast<std::byte*>(
            ::operator new(sizeof(SharedRow) + numbersSize(capacity) + capacity * sizeof(SharedNode<Child>)));
        auto* numbers = reinterpret_cast<Number*>(memory + sizeof(SharedRow));
        auto* children = reinterpret_cast<SharedNode<Child>*>(memory + sizeof(SharedRow) + numbersSize(capacity));
        return SharedNode<SharedRow>::adopting(::new (memory) SharedRow(capacity, numbers, children));
    }

    /// The row as the holder's alone, copied where it was not, with room for `extra` more children.
    static SharedRow& own(SharedNode<SharedRow>& row, std::size_t extra = 0) {
        const auto needed = row->m_size + extra;
        if (row.isUnique() && needed <= row->m_capacity)
            return *row;
        auto owned = withRoomFor(extra == 0 ? needed : std::bit_ceil(needed));
        if (row.isUnique())
            owned->takeChildren(*row);
        else
            owned->shareChildren(*row);
        row = std::move(owned);
        return *row;
    }

    [[nodiscard]] std::size_t size() const noexcept { return m_size; }
    [[nodiscard]] std::span<Number> numbers() noexcept { return {m_numbers, m_size}; }
    [[nodiscard]] std::span<const Number> numbers() const noexcept { return {m_numbers, m_size}; }
    [[nodiscard]] std::span<SharedNode<Child>> children() noexcept { return {m_children, m_size}; }
    [[nodiscard]] std::span<const SharedNode<Child>> children() const noexcept { return {m_children, m_size}; }

    /// There must be room, and the row must be held once alone; so for what follows.
    void insert(std::size_t offset, SharedNode<Child> child, Number number) noexcept {
        auto* const position = m_children + offset;
        auto* const end = m_children + m_size;
        ::new (end) SharedNode<Child>();
        std::move_backward(position, end, end + 1);
        *position = std::move(child);
        std::copy_backward(m_numbers + offset, m_numbers + m_size, m_numbers + m_size + 1);
        m_numbers[offset] = number;
        ++m_size;
    }

    void erase(std::size_t first, std::size_t last) noexcept {
        std::destroy(std::move(m_children + last, m_children + m_size, m_children + first), m_children + m_size);
        std::copy(m_numbers + last, m_numbers + m_size, m_numbers + first);
        m_size -= last - first;
    }

    /// Appends the children of another row, shared with it.
    void shareChildren(const SharedRow& other) noexcept {
        constexpr std::size_t ahead = 8;
        for (std::size_t i = 0; i < other.m_size; ++i) {
            // Each child's count lies in a cache line of its own, and an atomic increment waits for it alone.
            if (i + ahead < other.m_size)
                __builtin_prefetch(other.m_children[i + ahead].get(), 1);
            ::new (m_children + m_size + i) SharedNode<Child>(other.m_children[i]);
        }
        std::copy(other.m_numbers, other.m_numbers + other.m_size, m_numbers + m_size);
        m_size += other.m_size;
    }

    static void destroy(SharedRow* row) noexcept {
        std::destroy_n(row->m_children, row->m_size);
        row->~SharedRow();
        ::operator delete(row);
    }

private:
    SharedRow(std::size_t capacity, Number* numbers, SharedNode<Child>* children) noexcept
        : m_numbers(numbers), m_children(children), m_capacity(capacity) {}
    ~SharedRow() = default;

    void takeChildren(SharedRow& other) noexcept {
        std::uninitialized_move_n(other.m_children, other.m_size, m_children);
        std::copy_n(other.m_numbers, other.m_size, m_numbers);
        m_size = other.m_size;
    }

    // The children behind the numbers must be aligned.
    static constexpr std::size_t numbersSize(std::size_t capacity) noexcept {
        return (capacity * sizeof(Number) + alignof(SharedNode<Child>) - 1) & ~(alignof(SharedNode<Child>) - 1);
    }
    // Pointers, though both follow from the capacity: what is reached from `this` past the end of its own members the
    // compiler may take for untouched.
    Number* m_numbers;
    SharedNode<Child>* m_children;
    std::size_t m_size = 0;
    std::size_t m_capacity;
};
