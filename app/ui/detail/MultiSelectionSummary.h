// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/EmptyStateView.h"

#include <cstdint>

class AppState;

/// What the right column shows of several selected entries: their number, and what can be done with all of them.
class MultiSelectionSummary : public EmptyStateView {
    Q_OBJECT

public:
    MultiSelectionSummary(AppState& state, std::int64_t count, QWidget* parent = nullptr);
};
