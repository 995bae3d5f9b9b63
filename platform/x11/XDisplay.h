// SPDX-License-Identifier: MIT
#pragma once

namespace XDisplay {

/// Whether the X display of the environment lets us in, XWayland's included.
[[nodiscard]] bool canBeOpened();

}  // namespace XDisplay
