// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/Workspace.h"

/// The desktop that Qt knows.
class QtWorkspace final : public Workspace {
public:
    void openURL(std::string_view url) override;
};
