// SPDX-License-Identifier: MIT
#include "core/model/SharedArray.h"

#include "tests/support/Sharing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <thread>

namespace {

using Numbers = SharedArray<int>;

std::vector<int> listed(const Numbers& numbers) {
    return {numbers.begin(), numbers.end()};
}

Numbers countingTo(int count) {
    Numbers numbers;
    for (int i = 0; i < count; ++i)
        numbers.append(i);
    return numbers;
}

std::vector<std::size_t> indicesTo(std::size_t count) {
    std::vector<std::size_t> indices(count);
    std::iota(indices.begin(), indices.end(), 0);
    return indices;
}

std::size_t unsharedElements(const auto& a, const auto& b) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        count += shareElement(a, b, i) ? 0 : 1;
    return count;
}

/// An element that is found by its id.
struct Named {
    int id = 0;
    int value = 0;
    bool operator==(const Named&) const = default;
};

/// An element that counts its copies and those alive.
struct Counted {
    int value = 0;

    explicit Counted(int value) : value(value) { ++alive; }
    Counted(const Counted& other) : value(other.value) {
        ++alive;
        ++copies;
    }
    Counted(Counted&& other) noexcept : value(other.value) { ++alive; }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --alive; }

    static inline int alive = 0;
    static inline int copies = 0;
};

/// An element that counts how often it is compared.
struct Compared {
    int value = 0;
    static inline int comparisons = 0;
    friend bool operator==(const Compared& a, const Compared& b) {
        ++comparisons;
        return a.value == b.value;
    }
};

/// An element that holds an array of its own kind.
struct Nest {
    SharedArray<Nest> inner{};
};

/// Changes an array and a vector alike, at random.
class Twins {
public:
    explicit Twins(unsigned seed, int count) : m_random(seed) {
        for (int i = 0; i < count; ++i) {
            m_array.append({.id = i});
            m_vector.push_back({.id = i});
        }
    }

    void change() {
        const Named fresh{.id = static_cast<int>(below(500)), .value = static_cast<int>(m_random())};
        const auto place = below(m_vector.size() + 1);
        const auto at = m_vector.begin() + static_cast<std::ptrdiff_t>(place);
        switch (const auto isEnd = at == m_vector.end(); isEnd ? 0 : below(9)) {
            case 0:
            case 1:
                m_array.append(fresh);
                m_vector.push_back(fresh);
                break;
            case 2:
            case 3:
                m_array.insert(place, fresh);
                m_vector.insert(at, fresh);
                break;
            case 4:
            case 5:
            case 6:
                EXPECT_EQ(m_array.removeAt(place), *at);
                m_vector.erase(at);
                break;
            case 7:
                m_array.mutableAt(place) = fresh;
                *at = fresh;
                break;
            default:
                m_array.mutate(place, [&](Named& element) { element = fresh; });
                *at = fresh;
        }
    }

    void removeMost() {
        while (m_vector.size() > 10) {
            const auto place = below(m_vector.size());
            m_array.removeAt(place);
            m_vector.erase(m_vector.begin() + static_cast<std::ptrdiff_t>(place));
        }
    }

    void shuffle() {
        auto order = indicesTo(m_vector.size());
        std::ranges::shuffle(order, m_random);
        order.resize(order.size() - order.size() / 10);
        std::vector<Named> shuffled;
        for (const auto index : order)
            shuffled.push_back(m_vector[index]);
        m_array.rearrange(order);
        m_vector = shuffled;
    }

    void expectAlike() const {
        ASSERT_EQ(m_array.size(), m_vector.size());
        ASSERT_EQ(m_array.empty(), m_vector.empty());
        ASSERT_TRUE(std::equal(m_array.begin(), m_array.end(), m_vector.begin(), m_vector.end()));
        for (std::size_t i = 0; i < m_vector.size(); ++i)
            ASSERT_EQ(m_array[i], m_vector[i]);
        for (int id = 0; id < 510; ++id) {
            const auto found = std::ranges::find(m_vector, id, &Named::id);
            const auto index = m_array.indexOfID(id).value_or(m_vector.size());
            ASSERT_EQ(static_cast<std::ptrdiff_t>(index), found - m_vector.begin());
        }
    }

private:
    std::size_t below(std::size_t end) { return m_random() % end; }

    std::mt19937 m_random;
    SharedArray<Named> m_array;
    std::vector<Named> m_vector;
};

TEST(SharedArrayTest, behavesAsAVectorWhateverIsDoneToItAndSoDoItsCopies) {
    for (const int count : {0, 1, 255, 256, 257, 3'000}) {
        Twins twins(static_cast<unsigned>(count), count);
        std::vector<Twins> snapshots;
        for (int step = 0; step < 4'000; ++step) {
            twins.change();
            if (step % 200 == 0)
                snapshots.push_back(twins);
            if (step == 1'500)
                twins.shuffle();
            if (step == 3'000)
                twins.removeMost();
        }
        twins.expectAlike();
        for (const auto& snapshot : snapshots)
            snapshot.expectAlike();
    }
}

TEST(SharedArrayTest, isBuiltFromListsAndVectors) {
    EXPECT_EQ(listed({1, 2, 3}), (std::vector{1, 2, 3}));
    EXPECT_EQ(listed(std::vector{4, 5}), (std::vector{4, 5}));
    EXPECT_TRUE(Numbers().empty());
    EXPECT_TRUE(Numbers(std::vector<int>()).empty());
    EXPECT_EQ(Numbers().begin(), Numbers().end());
}

TEST(SharedArrayTest, givesItsEnds) {
    const auto numbers = countingTo(1'000);
    EXPECT_EQ(numbers.front(), 0);
    EXPECT_EQ(numbers.back(), 999);
}

TEST(SharedArrayTest, replacesAndClearsAllWithoutTouchingItsCopies) {
    auto numbers = countingTo(3);
    const auto copy = numbers;

    numbers = {7, 8};
    EXPECT_EQ(listed(numbers), (std::vector{7, 8}));
    numbers.clear();
    EXPECT_EQ(numbers.size(), 0u);

    EXPECT_EQ(listed(copy), (std::vector{0, 1, 2}));
}

TEST(SharedArrayTest, aMovedArrayIsEmptyAndItsElementsStayWhereTheyWere) {
    auto numbers = countingTo(300);
    const auto* first = &numbers.front();

    const auto moved = std::move(numbers);

    EXPECT_EQ(&moved.front(), first);
    EXPECT_TRUE(numbers.empty());  // NOLINT(bugprone-use-after-move): what a move leaves behind is told
}

TEST(SharedArrayTest, isItselfAfterBeingAssignedToItself) {
    auto numbers = countingTo(300);
    const auto& same = numbers;
    numbers = same;
    EXPECT_EQ(numbers, countingTo(300));
}

TEST(SharedArrayTest, iteratorsReachEveryElementFromEveryOther) {
    const auto numbers = countingTo(700);
    const auto begin = numbers.begin();
    for (const int from : {0, 255, 256, 300, 700})
        for (const int to : {0, 1, 256, 511, 512, 699}) {
            EXPECT_EQ(*(begin + from + (to - from)), to);
            EXPECT_EQ(*(to - from + (begin + from)), to);
            EXPECT_EQ((begin + from)[to - from], to);
            EXPECT_EQ((begin + to) - (begin + from), to - from);
            EXPECT_EQ(begin + to < begin + from, to < from);
        }
    EXPECT_EQ(std::vector<int>(std::make_reverse_iterator(numbers.end()), std::make_reverse_iterator(begin)).front(),
              699);
    EXPECT_EQ(*std::ranges::lower_bound(numbers, 517), 517);
    auto it = begin + 255;
    EXPECT_EQ(*it++, 255);
    EXPECT_EQ(*it--, 256);
    EXPECT_EQ(*--it, 254);
}

static_assert(std::random_access_iterator<Numbers::const_iterator>);

TEST(SharedArrayTest, aChangeCopiesOneElementHoweverLongTheArrayIs) {
    SharedArray<Counted> array;
    for (int i = 0; i < 100'000; ++i)
        array.append(Counted(i));
    const auto snapshot = array;
    Counted::copies = 0;

    array.mutableAt(54'321).value = -1;

    EXPECT_EQ(Counted::copies, 1);
    EXPECT_EQ(unsharedElements(array, snapshot), 1u);
    EXPECT_EQ(snapshot[54'321].value, 54'321);
}

TEST(SharedArrayTest, aSecondChangeOfWhatIsItsOwnCopiesNothing) {
    SharedArray<Counted> array{Counted(1), Counted(2)};
    const auto snapshot = array;
    array.mutableAt(0).value = 5;
    Counted::copies = 0;

    array.mutableAt(0).value = 6;

    EXPECT_EQ(Counted::copies, 0);
}

TEST(SharedArrayTest, insertingRemovingAndRearrangingCopyNoElement) {
    SharedArray<Counted> array;
    for (int i = 0; i < 2'000; ++i)
        array.append(Counted(i));
    const auto snapshot = array;
    Counted::copies = 0;

    array.insert(700, Counted(-1));
    EXPECT_EQ(Counted::copies, 0);
    array.rearrange(indicesTo(500));
    EXPECT_EQ(Counted::copies, 0);
    EXPECT_EQ(unsharedElements(array, snapshot), 0u);
    EXPECT_EQ(array.removeAt(499).value, 499);
    EXPECT_EQ(Counted::copies, 1);  // the one that is given out, while the snapshot has it too
}

TEST(SharedArrayTest, theElementsOfAnotherArrayAreAppendedAndNotCopied) {
    for (const int count : {0, 1, 255, 256, 700}) {
        SharedArray<Counted> array;
        SharedArray<Counted> other;
        for (int i = 0; i < count; ++i)
            array.append(Counted(i));
        for (int i = 0; i < 300; ++i)
            other.append(Counted(1000 + i));
        const auto before = array;
        Counted::copies = 0;

        array.appendAll(other);
        array.appendAll(array);

        EXPECT_EQ(Counted::copies, 0);
        ASSERT_EQ(array.size(), 2 * (before.size() + other.size()));
        EXPECT_EQ(before.size(), static_cast<std::size_t>(count));
        for (std::size_t i = 0; i < array.size(); ++i) {
            const auto place = i % (array.size() / 2);
            EXPECT_EQ(&array[i], place < before.size() ? &before[place] : &other[place - before.size()]);
        }
    }
}

TEST(SharedArrayTest, whatIsTakenOutOfALoneArrayIsMoved) {
    SharedArray<Counted> array{Counted(1), Counted(2)};
    Counted::copies = 0;

    EXPECT_EQ(array.removeAt(0).value, 1);

    EXPECT_EQ(Counted::copies, 0);
}

TEST(SharedArrayTest, fiftySnapshotsHoldWhatChangedAndLetItGo) {
    Counted::alive = 0;
    {
        SharedArray<Counted> array;
        for (int i = 0; i < 10'000; ++i)
            array.append(Counted(i));
        std::vector<SharedArray<Counted>> snapshots;
        for (std::size_t i = 0; i < 50; ++i) {
            snapshots.push_back(array);
            array.mutableAt(i * 199).value = -1;
        }
        EXPECT_EQ(Counted::alive, 10'050);

        snapshots.clear();
        EXPECT_EQ(Counted::alive, 10'000);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(SharedArrayTest, comparesNothingThatIsShared) {
    SharedArray<Compared> a;
    for (int i = 0; i < 1'000; ++i)
        a.append({i});
    auto b = a;
    Compared::comparisons = 0;

    EXPECT_EQ(a, b);
    EXPECT_EQ(Compared::comparisons, 0);

    b.mutableAt(10).value = 10;
    EXPECT_EQ(a, b);
    EXPECT_EQ(Compared::comparisons, 1);
}

TEST(SharedArrayTest, differsByAnElementAndByItsLength) {
    auto numbers = countingTo(600);
    EXPECT_EQ(numbers, countingTo(600));
    EXPECT_NE(numbers, countingTo(599));
    EXPECT_NE(numbers, Numbers());
    numbers.mutableAt(599) = 0;
    EXPECT_NE(numbers, countingTo(600));
}

TEST(SharedArrayTest, saysWhatTwoArraysShare) {
    const auto a = countingTo(300);
    auto b = a;
    EXPECT_TRUE(a.sharesStorageWith(b));
    EXPECT_TRUE(shareElement(a, b, 7));

    b.mutableAt(7) = 7;

    EXPECT_FALSE(a.sharesStorageWith(b));
    EXPECT_FALSE(shareElement(a, b, 7));
    EXPECT_TRUE(shareElement(a, b, 8));
    EXPECT_FALSE(shareElement(a, b, 300));
}

TEST(SharedArrayTest, findsTheFirstOfEqualIDs) {
    const SharedArray<Named> array{{.id = 1}, {.id = 2, .value = 1}, {.id = 2, .value = 2}};
    EXPECT_EQ(array.indexOfID(2), 1u);
    EXPECT_EQ(array.indexOfID(3), std::nullopt);
    EXPECT_EQ(SharedArray<Named>().indexOfID(3), std::nullopt);
}

TEST(SharedArrayTest, findsAnIDThatWasWrittenThroughAnEarlierReference) {
    SharedArray<Named> array;
    for (int i = 0; i < 600; ++i)
        array.append({.id = i});
    auto& earlier = array.mutableAt(5);
    array.mutableAt(6).value = 1;
    array.insert(0, {.id = -1});
    array.mutate(6, [](Named& element) { element.value = 2; });

    earlier.id = 9'999;

    EXPECT_EQ(array.indexOfID(9'999), 6u);
    EXPECT_EQ(array.indexOfID(5), std::nullopt);
    auto copy = array;
    copy.mutableAt(8).id = 8'888;  // its chunk is copied now, with every hint known again
    EXPECT_EQ(copy.indexOfID(9'999), 6u);
    EXPECT_EQ(copy.indexOfID(8'888), 8u);
    EXPECT_EQ(array.indexOfID(8'888), std::nullopt);
}

TEST(SharedArrayTest, aChainOfArraysInArraysOfAnyDepthIsDestroyedOnAShortStack) {
    Nest nest;
    for (int depth = 0; depth < 300'000; ++depth) {
        Nest outer;
        outer.inner.append(std::move(nest));
        nest = std::move(outer);
    }
    const auto copy = nest;
    nest = Nest();
}

TEST(SharedArrayTest, copiesChangeOnManyThreadsAtATime) {
    const auto original = countingTo(5'000);
    std::vector<std::thread> threads;
    for (unsigned seed = 0; seed < 4; ++seed)
        threads.emplace_back([&original, seed] {
            std::mt19937 random(seed);
            for (int round = 0; round < 50; ++round) {
                auto copy = original;
                for (int i = 0; i < 50; ++i)
                    copy.mutableAt(random() % copy.size()) = -1;
                copy.removeAt(random() % copy.size());
                EXPECT_NE(copy, original);
            }
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(original, countingTo(5'000));
}

}  // namespace
