// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

/// Holds the signals of an object back while a step of it lasts, so that no listener ever sees half a step. Each is
/// sent once at the end of the outermost step, in the order in which they were first asked for.
template <class Object>
class HeldSignals {
public:
    using Signal = void (Object::*)();

    explicit HeldSignals(Object& object) noexcept : m_object(object) {}
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;

    class Step {
    public:
        explicit Step(HeldSignals& held) noexcept : m_signals(held) { ++m_signals.m_openSteps; }
        ~Step() {
            if (--m_signals.m_openSteps == 0)
                m_signals.sendAll();
        }
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

    private:
        HeldSignals& m_signals;
    };

    /// A time in the middle of a step in which other things happen: these are no part of the step.
    class Interlude {
    public:
        explicit Interlude(HeldSignals& held) noexcept
            : m_signals(held), m_openSteps(std::exchange(held.m_openSteps, 0)) {}
        ~Interlude() { m_signals.m_openSteps = m_openSteps; }
        Interlude(const Interlude&) = delete;
        Interlude& operator=(const Interlude&) = delete;

    private:
        HeldSignals& m_signals;
        int m_openSteps;
    };

    /// Sends it at the end of the step, or at once where none is open.
    void send(Signal signal) {
        const Step step(*this);
        if (std::ranges::find(m_held, signal) == m_held.end())
            m_held.push_back(signal);
    }

private:
    void sendAll() {
        for (const auto signal : std::exchange(m_held, {}))
            (m_object.*signal)();
    }

    Object& m_object;
    std::vector<Signal> m_held;
    int m_openSteps = 0;
};
