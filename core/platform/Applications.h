// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

/// A window on the desktop, and the process that it is of.
struct DesktopWindow {
    std::int64_t processIdentifier = 0;
    std::uint64_t number = 0;  // as the desktop counts its windows
    friend bool operator==(const DesktopWindow&, const DesktopWindow&) = default;
};

/// An application that was in front, with its window. Either may end before this object does.
class RunningApplication {
public:
    virtual ~RunningApplication() = default;

    [[nodiscard]] virtual std::int64_t processIdentifier() const = 0;

    /// Its window; another window of its process where that one has closed.
    [[nodiscard]] virtual DesktopWindow window() const = 0;

    /// Its name for the user, or nothing.
    [[nodiscard]] virtual std::optional<std::string> localizedName() = 0;

    /// The title that its window has now, or nothing where it is unknown.
    [[nodiscard]] virtual std::optional<std::string> focusedWindowTitle() = 0;

    [[nodiscard]] virtual bool isTerminated() = 0;

    /// Asks the desktop to bring it to the front, which may take a while or not happen.
    virtual void activate() = 0;
};

/// The applications on the desktop.
class Applications {
public:
    virtual ~Applications() = default;

    /// The application in front, which may be this one; null where there is none or it is unknown.
    [[nodiscard]] virtual std::shared_ptr<RunningApplication> frontmost() = 0;

    /// The identifier of this process.
    [[nodiscard]] virtual std::int64_t ownProcessIdentifier() = 0;

    /// Calls `activated` after each change of the application or window in front, on the main thread. There is one
    /// observer; an empty one ends the notifications.
    virtual void observeActivation(std::function<void()> activated) = 0;
};
