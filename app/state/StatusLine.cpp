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
    show(std::move(text), false);
}

void StatusLine::setNotice(std::string text) {
    show(std::move(text), true);
}

void StatusLine::show(std::optional<std::string> text, bool isNotice) {
    if (text == m_error && isNotice == m_isNotice)
        return;
    m_error = std::move(text);
    m_isNotice = isNotice;
    emit errorChanged();
}

void StatusLine::setPassingNotice(std::string text) {
    m_passingNotice = text;
    setNotice(std::move(text));
}

void StatusLine::takeBackNotice() {
    if (m_error && m_error == m_passingNotice)
        setError(std::nullopt);
    m_passingNotice.reset();
}
