// SPDX-License-Identifier: MIT
#pragma once

/// What the desktop's own libraries keep of texts that passed through them.
namespace DesktopTraces {

/// Lets go of what was last selected in a field of ours, which any window could paste with the middle button.
void dropSelection();

/// Empties the stock of messages to assistive programs, in which a text that was read out stays until it is needed
/// again, and what the connection to the X server keeps of the last pastes.
void wipe();

}  // namespace DesktopTraces
