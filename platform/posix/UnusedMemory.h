// SPDX-License-Identifier: MIT
#pragma once

/// The memory that the process holds and does not use.
namespace UnusedMemory {

/// Overwrites what ended calls have left on the stack of the calling thread. To be called once something secret is
/// gone.
void wipeStack() noexcept;

/// Likewise, and gives the system back the pages that hold nothing any more. To be called once something large is gone;
/// it takes milliseconds.
void giveBack() noexcept;

}  // namespace UnusedMemory
