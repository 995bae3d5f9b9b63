// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

/// What a connection to the X server keeps of what went through it.
namespace XBuffers {

/// Overwrites it. A text that was pasted to or from another window stays there until as many bytes have come after it,
/// which can take hours in a window that is not used. Nothing of it shows.
void overwrite(xcb_connection_t* connection);

}  // namespace XBuffers
