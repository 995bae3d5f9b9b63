// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

/// Asks the desktop not to end the session without the user's knowledge.
class SessionInhibitor {
public:
    virtual ~SessionInhibitor() = default;

    /// From now on a user who logs out is shown the reason first, where the desktop does so.
    virtual void inhibit(std::string_view reason) = 0;

    /// The session may end.
    virtual void release() = 0;
};
