// SPDX-License-Identifier: MIT
#pragma once

namespace MotionSetting {

/// Whether the user has told the desktop to animate nothing. GNOME, Xfce, Cinnamon and their like tell it in XSETTINGS,
/// KDE in its settings file; Qt itself follows neither where it has no plugin of that desktop. Takes a millisecond.
[[nodiscard]] bool isReduced();

}  // namespace MotionSetting
