// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"

#include <QPointer>

/// The time of a derivation, in which the program goes on in the middle of a verb: what happens then is no part of the
/// verb's step, and the views hear of it at once. The end is a part of the step again, and its first.
class AppState::Meanwhile {
public:
    Meanwhile(AppState& state, RunningDerivation derivation)
        : m_state(state), m_openSteps(std::exchange(state.m_openSteps, 0)) {
        m_state.m_derivation = derivation;
        m_state.announce(&AppState::derivationChanged);
    }
    ~Meanwhile() {
        m_state.m_derivation.reset();
        m_state.m_openSteps = m_openSteps;
        m_state.announce(&AppState::derivationChanged);
    }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;

private:
    AppState& m_state;
    int m_openSteps;
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
        m_wish = Wish::none;  // who gives up a step gives up what was to follow it
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

/// A lock that is wished for while a key is derived comes when the verb has ended: it must not be lost, since its user
/// may be gone. The further one of two wishes counts.
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
