// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/SessionEvents.h"
#include "core/platform/SessionInhibitor.h"
#include "core/platform/UserInput.h"
#include "tests/support/FakeScheduler.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

/// A session that its user leaves when a test says so.
class FakeSessionEvents final : public SessionEvents {
public:
    void observe(Happened happened) override { m_happened = std::move(happened); }

    /// Returns a way to ask whether what was about to happen still waits.
    std::weak_ptr<void> happens(Event event) {
        auto hold = std::make_shared<int>(0);
        const std::weak_ptr<void> watched = hold;
        m_happened(event, std::move(hold));
        return watched;
    }
    std::weak_ptr<void> leave() { return happens(Event::left); }
    std::weak_ptr<void> end() { return happens(Event::ended); }

private:
    Happened m_happened;
};

/// A desktop that remembers what it was asked for.
class FakeSessionInhibitor final : public SessionInhibitor {
public:
    std::optional<std::string> reason;  // while the session is not to end
    int asked = 0;

    void inhibit(std::string_view why) override {
        reason = why;
        ++asked;
    }
    void release() override { reason.reset(); }
};

/// A user who does something when a test says so.
class FakeUserInput final : public UserInput {
public:
    explicit FakeUserInput(const FakeScheduler& clock) : m_clock(clock) {}

    void act() { m_last = m_clock.steadyNow(); }
    [[nodiscard]] std::chrono::nanoseconds idleTime() const override { return m_clock.steadyNow() - m_last; }

private:
    const FakeScheduler& m_clock;
    std::chrono::nanoseconds m_last{};
};
