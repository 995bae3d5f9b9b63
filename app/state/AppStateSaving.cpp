// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/FailureText.h"

#include <QPointer>

#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto statusLife = 2s;

}  // namespace

void AppState::save() {
    const Step step(*this);
    try {
        saveQuietly();
        flash("Kaydedildi");
    } catch (...) {
        setLastError(failureText());
    }
}

void AppState::saveQuietly() {
    if (!m_database || !m_databaseURL || !m_activeKey)
        return;
    m_services.files.writeAtomically(*m_databaseURL,
                                     m_services.codec.save(*m_database, *m_activeKey, KdbxKeys::transform));
    assign(m_isDirty, false, &AppState::isDirtyChanged);
}

void AppState::saveAs(const std::filesystem::path& url) {
    if (!m_database || !m_activeKey)
        return;
    const Step step(*this);
    try {
        m_services.files.writeAtomically(url, m_services.codec.save(*m_database, *m_activeKey, KdbxKeys::transform));
        assign(m_databaseURL, {url}, &AppState::databaseURLChanged);
        assign(m_isDirty, false, &AppState::isDirtyChanged);
        storeBookmark(url);
        flash("Kaydedildi");
    } catch (...) {
        setLastError(failureText());
    }
}

void AppState::flash(std::string text) {
    setStatusMessage(std::move(text));
    scheduleStatusClear();
}

// Each message has its own clear, which does not look at what is shown by then: one that came 1.5 seconds after
// another goes with it.
void AppState::scheduleStatusClear() {
    m_services.scheduler.after(statusLife, [state = QPointer<AppState>(this)] {
        if (state)
            state->setStatusMessage(std::nullopt);
    });
}
