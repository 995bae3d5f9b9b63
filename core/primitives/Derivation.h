// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Failure.h"

#include <atomic>
#include <cstdint>

/// Why a key derivation ended before its time: it was given up.
class DerivationGivenUp final : public ReadableFailure {
public:
    DerivationGivenUp() : ReadableFailure("Anahtar türetme durduruldu.") {}
};

/// A key derivation as it is watched and given up: the threads that derive count here what they have done, and ask
/// whether to go on. Every other thread may read it and give it up at any time.
class Derivation {
public:
    Derivation() noexcept = default;
    Derivation(const Derivation&) = delete;
    Derivation& operator=(const Derivation&) = delete;

    /// What has been done of the work, in 0...1; 0 before it has begun.
    [[nodiscard]] double fraction() const noexcept;

    /// Lets it end soon, some milliseconds from now at the most, with `DerivationGivenUp`. Without work it does nothing
    /// until there is some.
    void giveUp() noexcept { m_isGivenUp.store(true, std::memory_order_relaxed); }
    [[nodiscard]] bool isGivenUp() const noexcept { return m_isGivenUp.load(std::memory_order_relaxed); }

    /// The work that is to be done, in units of its own choice. Before the first `advance`.
    void begin(std::uint64_t amount) noexcept { m_amount.store(amount, std::memory_order_relaxed); }
    /// Counts work that has been done.
    void advance(std::uint64_t amount) noexcept { m_done.fetch_add(amount, std::memory_order_relaxed); }

private:
    std::atomic<std::uint64_t> m_amount = 0;
    std::atomic<std::uint64_t> m_done = 0;
    std::atomic<bool> m_isGivenUp = false;
};
