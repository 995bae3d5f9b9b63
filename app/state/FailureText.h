// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// What the user reads of the exception that is being handled: its own description if it carries one.
/// Only within a catch block.
[[nodiscard]] std::string failureText();
