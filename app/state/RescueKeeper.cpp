// SPDX-License-Identifier: MIT
#include "app/state/RescueKeeper.h"

#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr auto firstDelay = 5s;  // a change is seldom alone
constexpr auto interval = 1min;

}  // namespace

RescueKeeper::RescueKeeper(Services services, std::function<const KdbxDatabase*()> unsaved)
    : m_services(std::move(services)),
      m_unsaved(std::move(unsaved)),
      m_hasFailed(std::make_shared<std::atomic<bool>>(false)) {}

RescueKeeper::~RescueKeeper() {
    end();
}

void RescueKeeper::begin(const std::filesystem::path& vault, std::optional<KdbxTransformedKey> key, Offering offering) {
    end();
    m_vault = vault;
    m_key = std::move(key);
    if (offering == Offering::yes)
        for (auto& copy : m_services.store.copiesOf(vault))
            m_offers.push_back({std::move(copy.name), {copy.kept}});
}

void RescueKeeper::noteChange() {
    ++m_changes;
    if (m_key && m_task == 0)
        schedule(firstDelay);
}

void RescueKeeper::schedule(std::chrono::nanoseconds delay) {
    m_task = m_services.scheduler.after(delay, [this] {
        m_task = 0;
        if (m_kept != m_changes)
            keepBeside();
    });
}

// The copy of the vault shares all with it and costs nothing; it is encoded, enciphered and written elsewhere.
void RescueKeeper::keepBeside() {
    const auto* const database = m_unsaved();
    if (!database || !m_key)
        return;
    try {
        m_services.work.start([&store = m_services.store, encode = m_services.encode, name = ownName(),
                               hasFailed = m_hasFailed, copy = *database, key = *m_key] {
            try {
                store.write(name, encode(copy, key));
                *hasFailed = false;
            } catch (...) {
                *hasFailed = true;  // the next attempt comes in a minute, or with the session's end
            }
        });
        m_kept = m_changes;
    } catch (...) {
        *m_hasFailed = true;  // there was no memory to begin with
    }
    schedule(interval);
}

const std::string& RescueKeeper::ownName() {
    if (m_own.empty())
        m_own = m_services.store.newName(m_vault);
    return m_own;
}

void RescueKeeper::keep(const KdbxDatabase& database, Content content) {
    m_services.work.finish();
    const bool isKept = m_kept == m_changes && !m_own.empty() && !*m_hasFailed;
    if (!m_key || (content == Content::ofTheVault && isKept))
        return;
    m_services.store.write(ownName(), m_services.encode(database, *m_key));
    // Of a form there is more in the copy than in the vault: should the session go on, the next copy is another.
    m_kept = content == Content::ofTheVault ? m_changes : m_changes - 1;
    *m_hasFailed = false;
}

void RescueKeeper::noteSaved(const std::filesystem::path& vault, std::optional<KdbxTransformedKey> key) {
    m_services.work.finish();
    if (!m_own.empty())
        m_services.store.remove(std::exchange(m_own, {}));
    for (const auto& taken : std::exchange(m_taken, {}))
        m_services.store.remove(taken.name);
    m_services.scheduler.cancel(std::exchange(m_task, 0));
    m_kept = m_changes;
    if (m_vault != vault) {  // what was left of another file is offered with that file
        m_offers.clear();
        m_takenBack.clear();
    }
    m_vault = vault;
    if (key)
        m_key = std::move(key);
}

void RescueKeeper::end() {
    m_services.scheduler.cancel(std::exchange(m_task, 0));
    m_services.work.finish();
    if (!m_own.empty())
        m_services.store.release(std::exchange(m_own, {}));
    m_key.reset();
    m_offers.clear();
    m_taken.clear();
    m_takenBack.clear();
    m_kept = m_changes;
}

std::optional<RescueOffer> RescueKeeper::offer() const {
    return m_offers.empty() ? std::nullopt : std::optional(m_offers.back().offer);
}

Bytes RescueKeeper::readOffer() {
    m_services.work.finish();
    return m_services.store.read(m_offers.back().name);
}

void RescueKeeper::setOfferFailure(std::string text) {
    m_offers.back().offer.failure = std::move(text);
}

void RescueKeeper::deleteOffer() {
    m_services.work.finish();
    m_services.store.remove(m_offers.back().name);
    m_offers.pop_back();
}

void RescueKeeper::takeOffer() {
    m_taken.push_back(std::move(m_offers.back()));
    m_offers.pop_back();
    m_takenBack.clear();
}

void RescueKeeper::noteTakingUndone() {
    if (m_taken.empty())
        return;  // it was saved meanwhile
    m_offers.push_back(m_taken.back());
    m_takenBack.push_back(std::move(m_taken.back()));
    m_taken.pop_back();
}

void RescueKeeper::noteTakingRedone() {
    if (m_takenBack.empty())
        return;
    const auto again = std::move(m_takenBack.back());
    m_takenBack.pop_back();
    const auto isIt = [&](const Left& left) { return left.name == again.name; };
    if (std::erase_if(m_offers, isIt) > 0)
        m_taken.push_back(again);
}

KdbxKeys::Transformation RescueKeeper::knowing(KdbxKeys::Transformation otherwise) const {
    return m_key ? m_key->orElse(std::move(otherwise)) : otherwise;
}
