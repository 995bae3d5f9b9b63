// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

/// The moments at which the user leaves the session.
class SessionEvents {
public:
    enum class Event : std::uint8_t {
        left,   // locked, given to another user, or asleep: the user comes back
        ended,  // a log-out, or the computer's end
    };

    /// What was about to happen waits for as long as one of these lives, a few seconds at most. Null where nothing
    /// waits.
    using Hold = std::shared_ptr<void>;

    using Happened = std::function<void(Event event, Hold hold)>;

    virtual ~SessionEvents() = default;

    /// From now on calls `happened`, on the main thread and never within this call. One leaving may come several times:
    /// each of the desktop's parts reports it.
    virtual void observe(Happened happened) = 0;
};
