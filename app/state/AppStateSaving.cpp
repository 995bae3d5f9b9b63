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
    if (m_derivation)
        return;
    const Step step(*this);
    try {
        saveQuietly(DerivationPurpose::saving);
        flash("Kaydedildi");
    } catch (const DerivationGivenUp&) {
        // The vault stays unsaved, as it is shown.
    } catch (...) {
        setLastError(failureText());
    }
}

void AppState::saveQuietly(DerivationPurpose purpose) {
    if (!m_database || !m_databaseURL || !m_activeKey)
        return;
    const auto changeCount = m_changeCount;
    std::optional<KdbxTransformedKey> derived;
    m_vaultFile.save(*m_databaseURL, encoded(purpose, derived));
    assign(m_isDirty, changeCount != m_changeCount, &AppState::isDirtyChanged);
    noteSaved(std::move(derived));
    reportKept();
}

/// The vault's file as the vault is now. What changes while the key is derived is not in it.
Bytes AppState::encoded(DerivationPurpose purpose, std::optional<KdbxTransformedKey>& derived) {
    const auto database = *m_database;
    return m_services.codec.save(database, *m_activeKey, derivingFor(purpose, derived));
}

void AppState::saveAs(const std::filesystem::path& url) {
    if (!m_database || !m_activeKey || m_derivation)
        return;
    const Step step(*this);
    try {
        const auto changeCount = m_changeCount;
        std::optional<KdbxTransformedKey> derived;
        const auto file = encoded(DerivationPurpose::saving, derived);
        if (isOpenVault(url)) {
            m_vaultFile.save(url, file);
        } else {
            m_services.files.writeAtomically(url, file);
            m_vaultFile.begin(file, VaultFile::LosesByASave::no);
        }
        assign(m_databaseURL, {url}, &AppState::databaseURLChanged);
        assign(m_isDirty, changeCount != m_changeCount, &AppState::isDirtyChanged);
        noteSaved(std::move(derived));
        storeBookmark(url);
        reportKept();
        flash("Kaydedildi");
    } catch (const DerivationGivenUp&) {
        // The vault stays unsaved and where it was.
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
