// SPDX-License-Identifier: MIT
#include "core/primitives/Argon2Team.h"

#include <algorithm>
#include <atomic>
#include <barrier>
#include <limits>
#include <new>
#include <optional>
#include <system_error>
#include <thread>
#include <vector>

namespace Argon2 {
namespace {

/// The share of member `number` of a team of `size`, as even as can be.
LaneRange share(std::uint32_t lanes, std::uint32_t number, std::uint32_t size) {
    const auto begin = std::uint64_t{lanes} * number / size;
    const auto end = std::uint64_t{lanes} * (number + 1) / size;
    return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end - begin)};
}

/// What the members of a team wait for before they begin: how many they are, which is known once all have been started.
class Muster {
public:
    /// At its end settles that the team does not come together, unless something else was settled, so that no thread
    /// waits for ever. It is made after the threads, which are joined after it.
    class Dismissal {
    public:
        explicit Dismissal(Muster& muster) noexcept : m_muster(muster) {}
        ~Dismissal() { m_muster.settle(dismissed); }
        Dismissal(const Dismissal&) = delete;
        Dismissal& operator=(const Dismissal&) = delete;

    private:
        Muster& m_muster;
    };

    /// Does nothing the second time.
    void settle(std::uint32_t size) noexcept {
        auto expected = unsettled;
        if (m_size.compare_exchange_strong(expected, size))
            m_size.notify_all();
    }
    /// The team's size, or nothing for a team that does not come together.
    [[nodiscard]] std::optional<std::uint32_t> wait() const noexcept {
        m_size.wait(unsettled);
        const auto size = m_size.load();
        return size == dismissed ? std::nullopt : std::optional(size);
    }

private:
    static constexpr std::uint32_t unsettled = 0;
    static constexpr auto dismissed = std::numeric_limits<std::uint32_t>::max();

    std::atomic<std::uint32_t> m_size = unsettled;
};

}  // namespace

void shareLanes(std::uint32_t lanes, const std::function<void(LaneRange, const std::function<void()>& meet)>& work) {
    const auto useful = std::min(lanes, std::max(1U, std::thread::hardware_concurrency()));
    std::optional<std::barrier<>> barrier;
    const std::function<void()> meet = [&barrier] { barrier->arrive_and_wait(); };
    Muster muster;
    const auto takePart = [&](std::uint32_t number) {
        if (const auto size = muster.wait())
            work(share(lanes, number, *size), meet);
    };

    std::vector<std::jthread> others;
    others.reserve(useful - 1);
    const Muster::Dismissal dismissal(muster);
    try {
        while (others.size() + 1 < useful)
            others.emplace_back(takePart, static_cast<std::uint32_t>(others.size() + 1));
    } catch (const std::system_error&) {
        // The process may have no more threads. Those that there are share all lanes.
    } catch (const std::bad_alloc&) {
        // Nor memory for one.
    }
    const auto size = static_cast<std::uint32_t>(others.size() + 1);
    barrier.emplace(size);
    muster.settle(size);
    takePart(0);
}

}  // namespace Argon2
