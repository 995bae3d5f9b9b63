// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/FailureText.h"
#include "app/state/GroupTree.h"
#include "core/model/KdbxError.h"

#include <utility>

namespace {

constexpr const char* restoreLabel = "Saklananı Geri Getir";

/// Why the failure that is being handled keeps a copy from being brought back.
std::string reasonText() {
    try {
        throw;
    } catch (const KdbxError& error) {
        if (std::holds_alternative<KdbxError::InvalidCredentials>(error.failure()))
            return "Kasanın ana parolası ya da anahtar dosyası o günden beri değişmiş.";
        return error.errorDescription();
    } catch (...) {
        return failureText();
    }
}

/// Applies a form to the vault. What does not fit into it, as it would go too deep, is no reason to lose the rest: the
/// vault is then as it was.
bool applies(const AppState::FormContent& form, KdbxDatabase& database) {
    try {
        auto changed = database;
        if (!form(changed))
            return false;
        database = std::move(changed);
        return true;
    } catch (const KdbxError&) {
        return false;
    }
}

}  // namespace

void AppState::setFormContent(FormContent content) {
    m_formContent = std::move(content);
}

bool AppState::hasUnsavedForm() const noexcept {
    if (!m_database || !m_formContent)
        return false;
    try {
        auto database = *m_database;
        return applies(m_formContent, database);
    } catch (...) {
        return true;  // without memory to tell, it is better asked about
    }
}

KdbxKeys::Transformation AppState::derivingFor(DerivationPurpose purpose, std::optional<KdbxTransformedKey>& derived) {
    return m_rescues ? KdbxTransformedKey::remembering(derivingFor(purpose), derived) : derivingFor(purpose);
}

// Neither a vault that is open nor one that is saved fails for want of a copy: without memory there is none.
void AppState::beginRescues(std::optional<KdbxTransformedKey> key, RescueKeeper::Offering offering) {
    if (!m_rescues)
        return;
    try {
        m_rescues->begin(*m_databaseURL, std::move(key), offering);
    } catch (...) {
        m_rescues->end();
    }
    m_signals.send(&AppState::rescueOfferChanged);
}

void AppState::keepUnsaved() noexcept {
    try {
        keep();
    } catch (...) {
        // A session that ends is not held up: what was kept in the last minute is still there.
    }
}

void AppState::keep() {
    if (!m_rescues || !m_database)
        return;
    auto database = *m_database;
    const bool hasForm = m_formContent && applies(m_formContent, database);
    if (hasForm)
        m_rescues->keep(database, RescueKeeper::Content::ofAForm);
    else if (m_isDirty)
        m_rescues->keep(database, RescueKeeper::Content::ofTheVault);
}

void AppState::endRescues() {
    if (!m_rescues)
        return;
    keepUnsaved();
    m_rescues->end();
    m_signals.send(&AppState::rescueOfferChanged);
}

std::optional<RescueOffer> AppState::rescueOffer() const {
    return m_rescues && m_database ? m_rescues->offer() : std::nullopt;
}

void AppState::restoreRescue() {
    if (!rescueOffer() || !m_activeKey || m_derivation)
        return;
    const Step step(m_signals);
    m_signals.send(&AppState::rescueOfferChanged);
    try {
        auto kept = m_services.codec.load(m_rescues->readOffer(), *m_activeKey,
                                          m_rescues->knowing(derivingFor(DerivationPurpose::restoring)));
        UUIDSet groups;
        UUIDSet entries;
        GroupTree::repairDuplicateIDs(kept.root, groups, entries);
        bool isRestored = false;
        edit(restoreLabel, [&](KdbxDatabase& database) {
            database.meta = std::move(kept.meta);
            database.root = std::move(kept.root);
            isRestored = true;
        });
        if (!isRestored)
            return;
        m_rescues->takeOffer();
        pruneSelection();
        m_statusLine.flash("Saklanan değişiklikler geri getirildi");
    } catch (const DerivationGivenUp&) {
        // It is still offered.
    } catch (...) {
        m_rescues->setOfferFailure(reasonText());
    }
}

void AppState::deleteRescue() {
    if (!rescueOffer() || m_derivation)
        return;
    const Step step(m_signals);
    m_rescues->deleteOffer();
    m_signals.send(&AppState::rescueOfferChanged);
    m_statusLine.flash("Saklanan değişiklikler silindi");
}

/// A copy that was brought back by a step is to be decided on again once that step is undone.
void AppState::noteTravel(const std::string& label, UndoHistory::Direction direction) {
    if (!m_rescues || label != restoreLabel)
        return;
    if (direction == UndoHistory::Direction::undo)
        m_rescues->noteTakingUndone();
    else
        m_rescues->noteTakingRedone();
    m_signals.send(&AppState::rescueOfferChanged);
}
