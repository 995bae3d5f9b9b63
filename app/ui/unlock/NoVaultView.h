// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class ShakingBanner;

/// What the lock card shows before any vault is chosen: a vault can be opened or made.
class NoVaultView : public QWidget {
    Q_OBJECT

public:
    /// `spacing` is what lies above the banner.
    NoVaultView(ShakingBanner* banner, int spacing, QWidget* parent = nullptr);

signals:
    void openWanted();
    void createWanted();
};
