// SPDX-License-Identifier: MIT
#include "core/model/SharedArray.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace {

using Numbers = SharedArray<int>;

std::vector<int> listed(const Numbers& numbers) {
    return {numbers.begin(), numbers.end()};
}

/// Changes an array and a vector alike, at random, and looks whether they stay alike.
class Twins {
public:
    explicit Twins(unsigned seed) : m_random(seed) {}

    void change() {
        const int value = static_cast<int>(m_random());
        switch (const auto place = below(m_vector.size() + 1); below(8)) {
            case 0:
            case 1:
                m_array.append(value);
                m_vector.push_back(value);
                break;
            case 2:
            case 3:
                m_array.insert(place, value);
                m_vector.insert(m_vector.begin() + static_cast<std::ptrdiff_t>(place), value);
                break;
            case 4:
            case 5:
                if (place == m_vector.size())
                    break;
                EXPECT_EQ(m_array.removeAt(place), m_vector[place]);
                m_vector.erase(m_vector.begin() + static_cast<std::ptrdiff_t>(place));
                break;
            default:
                if (place == m_vector.size())
                    break;
                m_array.mutableAt(place) = value;
                m_vector[place] = value;
        }
    }

    void removeMost() {
        while (m_vector.size() > 10) {
            const auto place = below(m_vector.size());
            m_array.removeAt(place);
            m_vector.erase(m_vector.begin() + static_cast<std::ptrdiff_t>(place));
        }
    }

    void expectAlike() const {
        ASSERT_EQ(m_array.size(), m_vector.size());
        ASSERT_EQ(listed(m_array), m_vector);
        for (std::size_t i = 0; i < m_vector.size(); ++i)
            ASSERT_EQ(m_array[i], m_vector[i]);
    }

    [[nodiscard]] std::size_t below(std::size_t end) { return m_random() % end; }

private:
    std::mt19937 m_random;
    Numbers m_array;
    std::vector<int> m_vector;
};

TEST(SharedArrayTest, behavesAsAVectorWhateverIsDoneToItAndSoDoItsCopies) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        Twins twins(seed);
        std::vector<Twins> snapshots;
        for (int step = 0; step < 6'000; ++step) {
            twins.change();
            if (step % 300 == 0) {
                twins.expectAlike();
                snapshots.push_back(twins);
            }
            if (step % 2'000 == 1'999)
                twins.removeMost();
        }
        twins.expectAlike();
        for (const auto& snapshot : snapshots)
            snapshot.expectAlike();
    }
}

}  // namespace
