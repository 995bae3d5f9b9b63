// SPDX-License-Identifier: MIT
#include "core/primitives/Derivation.h"

#include <algorithm>

double Derivation::fraction() const noexcept {
    const auto amount = m_amount.load(std::memory_order_relaxed);
    const auto done = m_done.load(std::memory_order_relaxed);
    return amount == 0 ? 0 : std::min(static_cast<double>(done) / static_cast<double>(amount), 1.0);
}
