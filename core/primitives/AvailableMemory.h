// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>

/// The files in which the kernel reports memory.
struct MemorySources {
    std::filesystem::path processes = "/proc";
    std::filesystem::path controlGroups = "/sys/fs/cgroup";
};

/// How many bytes this process can still fill without a process being ended for it: what is free or can be freed in
/// the machine, swap included, and in the control groups around the process, whichever is least. An estimate, and one
/// that ages. The largest number where none of them does.
[[nodiscard]] std::uint64_t availableMemory(const MemorySources& sources = {});
