// SPDX-License-Identifier: MIT
#include "platform/qt/QtBackgroundWork.h"

#include "core/primitives/Bytes.h"

#include <QEventLoop>
#include <QMetaObject>

#include <chrono>
#include <exception>
#include <future>
#include <system_error>
#include <thread>

namespace {

using namespace std::chrono_literals;

// A save that is nearly done is worth more than a quick end. Sessions that end wait longer than this for a program.
constexpr auto longestFinish = 3s;

/// The work on its thread. The destructor waits for its end.
class Worker {
public:
    /// @throws std::system_error where no thread can be started.
    Worker(const std::function<void()>& work, QEventLoop& loop)
        : m_end(m_promise.get_future()), m_thread([this, &work, &loop] {
              try {
                  work();
                  m_promise.set_value();
              } catch (...) {
                  m_promise.set_exception(std::current_exception());
              }
              wipeUnusedStack();  // the thread's stack is given to the next thread as it is
              QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
          }) {}

    [[nodiscard]] bool hasEndedWithin(std::chrono::nanoseconds duration) const {
        return m_end.wait_for(duration) == std::future_status::ready;
    }
    /// Waits for the end and throws what the work has thrown.
    void finish() { m_end.get(); }

private:
    std::promise<void> m_promise;
    std::future<void> m_end;
    std::jthread m_thread;
};

}  // namespace

void QtBackgroundWork::run(const Task& task) {
    QEventLoop loop;
    std::optional<Worker> worker;
    try {
        worker.emplace(task.work, loop);
    } catch (const std::system_error&) {
        return task.work();
    }
    loop.exec();
    if (!worker->hasEndedWithin(task.atEnd == AtEnd::finishes ? longestFinish : 0s))
        task.giveUp();
    worker->finish();
}
