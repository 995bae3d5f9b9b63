// SPDX-License-Identifier: MIT
#pragma once

#include "core/clipboard/Observers.h"

#include <functional>

/// When a secret that was shown is shown no more. What painted it, and what carried it to assistive programs, has
/// traces left then, which those widgets cannot reach.
namespace ShownSecrets {

/// Calls `observer` after each, for as long as the subscription lives.
[[nodiscard]] Observers::Subscription observeEnd(std::function<void()> observer);

void noteEnd();

}  // namespace ShownSecrets
