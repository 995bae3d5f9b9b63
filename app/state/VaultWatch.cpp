// SPDX-License-Identifier: MIT
#include "app/state/VaultWatch.h"

#include "app/state/AppState.h"
#include "core/platform/FileWatcher.h"

#include <QPointer>

#include <chrono>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr auto restOfAChange = 300ms;  // a file that is written is noticed at each of its pieces

}  // namespace

VaultWatch::VaultWatch(Services services, QObject* parent) : QObject(parent), m_services(services) {
    connect(&m_services.state, &AppState::databaseURLChanged, this, &VaultWatch::follow);
    follow();
}

void VaultWatch::follow() {
    m_services.watcher.watch(m_services.state.databaseURL(), [watch = QPointer<VaultWatch>(this)] {
        if (watch)
            watch->lookSoon();
    });
}

void VaultWatch::lookSoon() {
    if (std::exchange(m_isLookingSoon, true))
        return;
    m_services.scheduler.after(restOfAChange, [watch = QPointer<VaultWatch>(this)] {
        if (!watch)
            return;
        watch->m_isLookingSoon = false;
        watch->m_services.state.lookAtFile();
    });
}
