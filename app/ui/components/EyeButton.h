// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/IconButton.h"

/// The button that reveals a secret, and hides it again. What a click does is its owner's.
class EyeButton : public IconButton {
    Q_OBJECT

public:
    explicit EyeButton(QWidget* parent = nullptr);

    /// Shows what a click would do now: hide what is revealed, or reveal it.
    void showRevealed(bool isRevealed);
};
