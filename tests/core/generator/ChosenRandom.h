// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <vector>

/// A random source that gives chosen values, one after the other, and counts them.
class ChosenRandom {
public:
    ChosenRandom(std::initializer_list<std::uint32_t> values) : m_values(values) {}

    std::uint32_t operator()() {
        if (m_drawn == m_values.size()) {
            ADD_FAILURE() << "more values are drawn than were chosen";
            return 0;
        }
        return m_values[m_drawn++];
    }

    [[nodiscard]] std::size_t drawn() const { return m_drawn; }
    [[nodiscard]] bool isUsedUp() const { return m_drawn == m_values.size(); }

private:
    std::vector<std::uint32_t> m_values;
    std::size_t m_drawn = 0;
};
