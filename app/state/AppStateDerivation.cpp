// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"

#include <QPointer>

/// The time of a derivation, in which the program goes on in the middle of a verb. What happens then is no part of the
/// verb's step; the end of the derivation is.
class AppState::Meanwhile {
public:
    Meanwhile(AppState& state, RunningDerivation derivation) : m_state(state) {
        m_interlude.emplace(state.m_signals);
        m_state.m_derivation = derivation;
        m_state.m_signals.send(&AppState::derivationChanged);
    }
    ~Meanwhile() {
        m_state.m_derivation.reset();
        m_interlude.reset();
        m_state.m_signals.send(&AppState::derivationChanged);
    }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;

private:
    AppState& m_state;
    std::optional<HeldSignals<AppState>::Interlude> m_interlude;
};

KdbxKeys::Transformation AppState::derivingFor(DerivationPurpose purpose) {
    return [this, purpose](ByteView compositeKey, const KdbxHeader& header) {
        return derive(purpose, compositeKey, header);
    };
}

Bytes AppState::derive(DerivationPurpose purpose, ByteView compositeKey, const KdbxHeader& header) {
    Derivation derivation;
    Bytes transformed;
    const bool writes = purpose == DerivationPurpose::saving || purpose == DerivationPurpose::locking;
    const BackgroundWork::Task task{
        .work = [&] { transformed = KdbxKeys::transformWatched(compositeKey, header, &derivation); },
        .giveUp = [&] { derivation.giveUp(); },
        .atEnd = writes ? BackgroundWork::AtEnd::finishes : BackgroundWork::AtEnd::givesUp};
    try {
        const Meanwhile meanwhile(*this, {purpose, &derivation});
        m_services.background.run(task);
    } catch (const DerivationGivenUp&) {
        m_wish = Wish::none;  // what was to follow the step is given up with it
        throw;
    } catch (...) {
        fulfilWishSoon();
        throw;
    }
    fulfilWishSoon();
    return transformed;
}

std::optional<AppState::DerivationPurpose> AppState::derivation() const noexcept {
    return m_derivation ? std::optional(m_derivation->purpose) : std::nullopt;
}

double AppState::derivationFraction() const noexcept {
    return m_derivation ? m_derivation->derivation->fraction() : 0;
}

void AppState::giveUpDerivation() {
    if (m_derivation)
        m_derivation->derivation->giveUp();
}

/// A lock that is asked for while a key is derived follows when the verb has ended: it must not be lost, since the user
/// may be gone. Of two wishes the further one counts.
bool AppState::isPutOff(Wish wish) {
    if (!m_derivation)
        return false;
    m_wish = std::max(m_wish, wish);
    return true;
}

void AppState::fulfilWishSoon() {
    if (m_wish == Wish::none)
        return;
    m_services.scheduler.after({}, [state = QPointer<AppState>(this), wish = std::exchange(m_wish, Wish::none)] {
        if (!state)
            return;
        if (wish == Wish::close)
            state->closeDatabase();
        else
            state->lock();
    });
}
