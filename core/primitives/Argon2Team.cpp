// SPDX-License-Identifier: MIT
#include "core/primitives/Argon2Team.h"

#include <algorithm>
#include <atomic>
#include <barrier>
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

}  // namespace

void shareLanes(std::uint32_t lanes, const std::function<void(LaneRange, const std::function<void()>& meet)>& work) {
    const auto useful = std::min(lanes, std::max(1U, std::thread::hardware_concurrency()));
    std::atomic<std::uint32_t> teamSize = 0;
    std::optional<std::barrier<>> barrier;
    const auto takePart = [&](std::uint32_t number) {
        teamSize.wait(0);
        work(share(lanes, number, teamSize), [&] { barrier->arrive_and_wait(); });
    };

    std::vector<std::jthread> others;
    others.reserve(useful - 1);
    try {
        while (others.size() + 1 < useful)
            others.emplace_back(takePart, static_cast<std::uint32_t>(others.size() + 1));
    } catch (const std::system_error&) {
        // The process may have no more threads. Those that there are share all lanes.
    }
    const auto size = static_cast<std::uint32_t>(others.size() + 1);
    barrier.emplace(size);
    teamSize = size;
    teamSize.notify_all();
    takePart(0);
}

}  // namespace Argon2
