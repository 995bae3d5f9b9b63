// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/theme/Theme.h"

#include <QEasingCurve>

#include <chrono>

/// How things move: shortly, easing out, and not at all where the desktop asks for calm.
namespace Motion {

/// Whether the desktop asks for reduced motion. Not before `setReduced` has said so.
[[nodiscard]] bool isReduced();
void setReduced(bool isReduced);

/// A duration for an animation, in milliseconds: 0 where motion is reduced, which Qt runs as a jump to the end.
[[nodiscard]] int milliseconds(std::chrono::milliseconds duration = Metric::motion);

inline constexpr auto curve = QEasingCurve::OutCubic;

}  // namespace Motion
