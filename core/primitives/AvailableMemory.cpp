// SPDX-License-Identifier: MIT
#include "core/primitives/AvailableMemory.h"

#include <algorithm>
#include <fstream>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace {

namespace fs = std::filesystem;

constexpr auto boundless = std::numeric_limits<std::uint64_t>::max();

std::uint64_t difference(std::uint64_t from, std::uint64_t what) {
    return from > what ? from - what : 0;
}

std::optional<std::uint64_t> numberIn(const fs::path& file) {
    std::ifstream stream(file);
    std::uint64_t number = 0;
    // A group without a limit says "max".
    return stream >> number ? std::optional(number) : std::nullopt;
}

/// The number behind a name at the beginning of a line.
std::optional<std::uint64_t> numberNamed(std::string_view name, const fs::path& file) {
    std::ifstream stream(file);
    std::string word;
    std::uint64_t number = 0;
    for (std::string line; stream >> word; std::getline(stream, line))
        if (word == name && stream >> number)
            return number;
    return std::nullopt;
}

std::uint64_t inMachine(const fs::path& processes) {
    const auto file = processes / "meminfo";
    const auto availableKiB = numberNamed("MemAvailable:", file);
    if (!availableKiB)
        return boundless;
    return (*availableKiB + numberNamed("SwapFree:", file).value_or(0)) * 1024;
}

struct GroupFiles {
    const char* limit;
    const char* usage;
    const char* inactiveFiles;
    const char* activeFiles;
};

constexpr GroupFiles unified{"memory.max", "memory.current", "inactive_file", "active_file"};
constexpr GroupFiles legacy{"memory.limit_in_bytes", "memory.usage_in_bytes", "total_inactive_file",
                            "total_active_file"};

std::uint64_t inGroup(const fs::path& group, const GroupFiles& files) {
    const auto limit = numberIn(group / files.limit);
    const auto usage = numberIn(group / files.usage);
    if (!limit || !usage)
        return boundless;
    // What the group's files hold in the cache counts as used, and makes room when it is asked to.
    const auto cached = numberNamed(files.inactiveFiles, group / "memory.stat").value_or(0) +
                        numberNamed(files.activeFiles, group / "memory.stat").value_or(0);
    return difference(*limit, difference(*usage, cached));
}

/// A group is bound by the limits of those above it too.
std::uint64_t inGroupAndAbove(const fs::path& root, fs::path group, const GroupFiles& files) {
    auto available = inGroup(root, files);
    for (group = group.relative_path(); !group.empty(); group = group.parent_path())
        available = std::min(available, inGroup(root / group, files));
    return available;
}

std::uint64_t inControlGroups(const MemorySources& sources) {
    std::ifstream groups(sources.processes / "self/cgroup");
    auto available = boundless;
    // Each line is a hierarchy's number, its controllers and the process's group in it (cgroups(7)).
    for (std::string line; std::getline(groups, line);) {
        const auto controllers = line.find(':') + 1;
        const auto path = line.find(':', controllers) + 1;
        if (controllers == 0 || path == 0)
            continue;
        const auto names = ',' + line.substr(controllers, path - 1 - controllers) + ',';
        if (names == ",,")
            available = std::min(available, inGroupAndAbove(sources.controlGroups, line.substr(path), unified));
        else if (names.find(",memory,") != std::string::npos)
            available =
                std::min(available, inGroupAndAbove(sources.controlGroups / "memory", line.substr(path), legacy));
    }
    return available;
}

}  // namespace

std::uint64_t availableMemory(const MemorySources& sources) {
    return std::min(inMachine(sources.processes), inControlGroups(sources));
}
