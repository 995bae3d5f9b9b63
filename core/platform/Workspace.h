// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

/// The desktop around the program.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// Hands a URL to the program that the user has for it. Whether that worked is unknown.
    virtual void openURL(std::string_view url) = 0;
};
