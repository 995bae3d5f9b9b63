// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/commands/Command.h"

class IconButton;

/// A button of the command's symbol, with its name and its key as the tooltip. What a click does is its owner's.
[[nodiscard]] IconButton* makeCommandButton(Command::ID id);
