// SPDX-License-Identifier: MIT
#include "platform/posix/WorkThread.h"

#include "core/primitives/Bytes.h"

#include <array>
#include <system_error>
#include <utility>

namespace {

// A thread's stack is kept for the next thread, with all that the work has left on it. Deeper than any work goes that
// handles a key.
[[gnu::noinline]] void wipeOwnStack() noexcept {
    std::array<std::uint8_t, 256 * 1024> unused;
    secureWipe(unused.data(), unused.size());
}

}  // namespace

void WorkThread::start(std::function<void()> work) {
    {
        const std::lock_guard lock(m_mutex);
        m_waiting.push_back(std::move(work));
        if (std::exchange(m_isRunning, true))
            return;
    }
    if (m_thread.joinable())
        m_thread.join();
    try {
        m_thread = std::thread([this] { run(); });
    } catch (const std::system_error&) {
        run();
    }
}

void WorkThread::finish() {
    if (m_thread.joinable())
        m_thread.join();
}

void WorkThread::run() {
    for (;;) {
        std::function<void()> work;
        {
            const std::lock_guard lock(m_mutex);
            m_isRunning = !m_waiting.empty();
            if (!m_isRunning)
                break;
            work = std::move(m_waiting.front());
            m_waiting.pop_front();
        }
        work();
        work = nullptr;
        wipeOwnStack();
    }
}
