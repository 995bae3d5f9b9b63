// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/Clipboard.h"

#include <memory>

/// The clipboard of the running QGuiApplication. On X its changes are counted exactly; elsewhere by Qt's signal, which
/// hears of another program's write when the loop next runs.
[[nodiscard]] std::unique_ptr<Clipboard> desktopClipboard();
