// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// How many bytes this process could fill now without pushing others out to swap: the least of what the machine has
/// left and what the control groups around the process leave it. An estimate, and one that ages.
[[nodiscard]] std::uint64_t availableMemory();
