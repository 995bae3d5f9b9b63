// SPDX-License-Identifier: MIT
#pragma once

/// What keeps this process's memory its own.
namespace ProcessHardening {

/// From now on the process leaves no core dump, and no other process of this user may trace it or read its memory.
void keepMemoryPrivate() noexcept;

}  // namespace ProcessHardening
