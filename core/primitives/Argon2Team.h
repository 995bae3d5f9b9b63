// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Argon2Segment.h"

#include <functional>

namespace Argon2 {

/// Runs `work` on the calling thread and on as many others as are useful and can be started, each with a range of the
/// lanes that is its own; together the ranges are all lanes. Inside it, `meet` waits until every thread is there.
/// All other threads have ended on return.
void shareLanes(std::uint32_t lanes, const std::function<void(LaneRange, const std::function<void()>& meet)>& work);

}  // namespace Argon2
