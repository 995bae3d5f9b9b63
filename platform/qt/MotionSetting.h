// SPDX-License-Identifier: MIT
#pragma once

namespace MotionSetting {

/// Whether animations are off in the desktop's settings. GNOME, Xfce, Cinnamon and their like have that in XSETTINGS,
/// KDE in its settings file; Qt itself follows neither where it has no plugin of that desktop. Takes a millisecond.
[[nodiscard]] bool isReduced();

}  // namespace MotionSetting
