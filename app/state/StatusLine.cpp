// SPDX-License-Identifier: MIT
#include "app/state/StatusLine.h"

#include "core/platform/Scheduler.h"

#include <QPointer>

#include <chrono>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr auto messageLife = 2s;

}  // namespace

void StatusLine::setMessage(std::optional<std::string> text) {
    if (text == m_message)
        return;
    m_message = std::move(text);
    emit messageChanged();
}

void StatusLine::flash(std::string text) {
    setMessage(std::move(text));
    scheduleStatusClear();
}

// Each message has its own clear, which does not look at what is shown by then: one that came 1.5 seconds after
// another goes with it.
void StatusLine::scheduleStatusClear() {
    m_scheduler.after(messageLife, [line = QPointer<StatusLine>(this)] {
        if (line)
            line->setMessage(std::nullopt);
    });
}

void StatusLine::setError(std::optional<std::string> text) {
    if (text == m_error)
        return;
    m_error = std::move(text);
    emit errorChanged();
}

void StatusLine::setNotice(std::string text) {
    m_notice = std::move(text);
    setError(m_notice);
}

void StatusLine::takeBackNotice() {
    if (m_error && m_error == m_notice)
        setError(std::nullopt);
    m_notice.reset();
}
