// SPDX-License-Identifier: MIT
#include "app/ui/commands/CommandButton.h"

#include "app/ui/components/IconButton.h"

IconButton* makeCommandButton(Command::ID id) {
    const auto& command = Command::of(id);
    return new IconButton(command.symbol, command.tip());
}
