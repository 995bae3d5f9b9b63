// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/FailureText.h"

void AppState::save() {
    if (m_derivation)
        return;
    const Step step(m_signals);
    try {
        saveQuietly(DerivationPurpose::saving);
        m_statusLine.flash("Kaydedildi");
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
    noteSaved(changeCount, std::move(derived));
    reportKept();
}

/// The file holds the vault as it was after so many changes.
void AppState::noteSaved(std::int64_t changeCount, std::optional<KdbxTransformedKey> key) {
    assign(m_isDirty, changeCount != m_changeCount, &AppState::isDirtyChanged);
    if (!m_rescues)
        return;
    m_rescues->noteSaved(*m_databaseURL, std::move(key));
    if (m_isDirty)
        m_rescues->noteChange();  // made while the key was derived, and so not in the file
    m_signals.send(&AppState::rescueOfferChanged);
}

/// The vault's file as the vault is now. What changes while the key is derived is not in it.
Bytes AppState::encoded(DerivationPurpose purpose, std::optional<KdbxTransformedKey>& derived) {
    const auto database = *m_database;
    return m_services.codec.save(database, *m_activeKey, derivingFor(purpose, derived));
}

void AppState::saveAs(const std::filesystem::path& url) {
    if (!m_database || !m_activeKey || m_derivation)
        return;
    const Step step(m_signals);
    try {
        const auto changeCount = m_changeCount;
        std::optional<KdbxTransformedKey> derived;
        const auto file = encoded(DerivationPurpose::saving, derived);
        if (isCurrentFile(url)) {
            m_vaultFile.save(url, file);
        } else {
            m_services.files.writeAtomically(url, file);
            m_vaultFile.begin(file, VaultFile::LosesByASave::no);
        }
        assign(m_databaseURL, {url}, &AppState::databaseURLChanged);
        noteSaved(changeCount, std::move(derived));
        storeBookmark(url);
        reportKept();
        m_statusLine.flash("Kaydedildi");
    } catch (const DerivationGivenUp&) {
        // The vault stays unsaved and where it was.
    } catch (...) {
        setLastError(failureText());
    }
}
