// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// What the user is told of the exception that is being handled: its own description where it carries one.
/// Only within a catch block.
[[nodiscard]] std::string failureText();
