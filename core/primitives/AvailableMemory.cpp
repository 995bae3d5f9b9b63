// SPDX-License-Identifier: MIT
#include "core/primitives/AvailableMemory.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>
#include <optional>
#include <string>

namespace {

constexpr auto unlimited = std::numeric_limits<std::uint64_t>::max();

/// The number that a file begins with; nothing where there is no such file, or a word as "max" in it.
std::optional<std::uint64_t> numberIn(const std::filesystem::path& file) {
    std::ifstream stream(file);
    std::uint64_t number = 0;
    if (stream >> number)
        return number;
    return std::nullopt;
}

/// The kernel's own estimate, MemAvailable of proc(5).
std::uint64_t leftByTheMachine() {
    std::ifstream stream("/proc/meminfo");
    std::string word;
    std::uint64_t kibibytes = 0;
    while (stream >> word)
        if (word == "MemAvailable:" && stream >> kibibytes)
            return kibibytes * 1024;
    return unlimited;
}

/// The process's path in the unified hierarchy, the line "0::/path" of /proc/self/cgroup (cgroups(7)).
std::filesystem::path controlGroup() {
    std::ifstream stream("/proc/self/cgroup");
    for (std::string line; std::getline(stream, line);)
        if (line.starts_with("0::/"))
            return line.substr(4);
    return {};
}

/// The least that a control group leaves on the way from the process's own up to the root.
std::uint64_t leftByControlGroups() {
    const std::filesystem::path root = "/sys/fs/cgroup";
    auto left = unlimited;
    for (auto group = controlGroup(); !group.empty(); group = group.parent_path()) {
        const auto most = numberIn(root / group / "memory.max");
        const auto used = numberIn(root / group / "memory.current");
        if (most && used)
            left = std::min(left, *most - std::min(*most, *used));
    }
    return left;
}

}  // namespace

std::uint64_t availableMemory() {
    return std::min(leftByTheMachine(), leftByControlGroups());
}
