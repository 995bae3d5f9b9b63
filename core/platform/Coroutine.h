// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/Scheduler.h"

#include <chrono>
#include <coroutine>
#include <exception>
#include <optional>
#include <utility>

/// An operation on the main thread that gives it up while it waits. It starts at once and is awaited at most once.
/// Destroyed before its end it ends where it waits: its locals are destroyed in the usual order, and what awaits it is
/// not resumed. A failure waits in it until it is awaited.
class [[nodiscard]] Coroutine {
public:
    class promise_type;

    Coroutine(Coroutine&& other) noexcept : m_handle(std::exchange(other.m_handle, {})) {}
    Coroutine& operator=(Coroutine&& other) noexcept {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~Coroutine() {
        if (m_handle)
            m_handle.destroy();
    }

    [[nodiscard]] bool await_ready() const noexcept { return m_handle.done(); }
    void await_suspend(std::coroutine_handle<> awaiting) const noexcept;
    void await_resume() const;

private:
    explicit Coroutine(std::coroutine_handle<promise_type> handle) noexcept : m_handle(handle) {}

    std::coroutine_handle<promise_type> m_handle;  // null once moved from
};

class Coroutine::promise_type {
public:
    Coroutine get_return_object() noexcept {
        return Coroutine(std::coroutine_handle<promise_type>::from_promise(*this));
    }
    [[nodiscard]] std::suspend_never initial_suspend() const noexcept { return {}; }
    [[nodiscard]] auto final_suspend() const noexcept { return Handover(); }
    void return_void() const noexcept {}
    void unhandled_exception() noexcept { m_failure = std::current_exception(); }

private:
    friend class Coroutine;

    /// At the end, what awaits the coroutine is resumed.
    struct Handover {
        [[nodiscard]] bool await_ready() const noexcept { return false; }
        [[nodiscard]] std::coroutine_handle<> await_suspend(std::coroutine_handle<promise_type> ended) const noexcept {
            return ended.promise().m_awaiting;
        }
        void await_resume() const noexcept {}
    };

    std::coroutine_handle<> m_awaiting = std::noop_coroutine();
    std::exception_ptr m_failure;
};

inline void Coroutine::await_suspend(std::coroutine_handle<> awaiting) const noexcept {
    m_handle.promise().m_awaiting = awaiting;
}

inline void Coroutine::await_resume() const {
    if (m_handle.promise().m_failure)
        std::rethrow_exception(m_handle.promise().m_failure);
}

/// Why a sleep ended before its time.
class Cancelled final : public std::exception {
public:
    /// For the user, in Turkish.
    [[nodiscard]] const char* what() const noexcept override { return "İşlem iptal edildi."; }
};

/// The sleep of one chain of coroutines, of which at most one sleeps at a time. It outlives them.
class Sleeper {
public:
    enum class Cancellable : bool { no, yes };

    explicit Sleeper(Scheduler& scheduler) noexcept : m_scheduler(scheduler) {}
    Sleeper(const Sleeper&) = delete;
    Sleeper& operator=(const Sleeper&) = delete;
    ~Sleeper() { forget(); }

    /// What `co_await` takes: it goes on after the duration, at once where that is 0 or less.
    ///
    /// @throws Cancelled, where it is cancellable and longer than 0, when it is cancelled or was before.
    [[nodiscard]] auto sleep(std::chrono::nanoseconds duration, Cancellable cancellable = Cancellable::yes) noexcept {
        return Sleep{*this, duration, cancellable};
    }

    /// Ends the sleep and all later ones with `Cancelled`. The sleeping coroutine is resumed within this call.
    void cancel() {
        m_isCancelled = true;
        if (m_sleeping && m_cancellable == Cancellable::yes) {
            forget();
            std::exchange(m_sleeping, {}).resume();
        }
    }

private:
    struct Sleep {
        Sleeper& sleeper;
        std::chrono::nanoseconds duration;
        Cancellable cancellable;

        [[nodiscard]] bool isCancelled() const noexcept {
            return sleeper.m_isCancelled && cancellable == Cancellable::yes;
        }
        [[nodiscard]] bool await_ready() const noexcept { return duration.count() <= 0 || isCancelled(); }
        void await_suspend(std::coroutine_handle<> sleeping) const { sleeper.begin(*this, sleeping); }
        void await_resume() const {
            if (duration.count() > 0 && isCancelled())
                throw Cancelled();
        }
    };

    void begin(const Sleep& sleep, std::coroutine_handle<> sleeping) {
        m_task = m_scheduler.after(sleep.duration, [this] {
            m_task.reset();
            std::exchange(m_sleeping, {}).resume();
        });
        m_sleeping = sleeping;
        m_cancellable = sleep.cancellable;
    }

    void forget() {
        if (m_task)
            m_scheduler.cancel(*m_task);
        m_task.reset();
    }

    Scheduler& m_scheduler;
    std::optional<Scheduler::Task> m_task;  // set during a sleep
    std::coroutine_handle<> m_sleeping;     // null outside of a sleep
    Cancellable m_cancellable = Cancellable::yes;
    bool m_isCancelled = false;
};
