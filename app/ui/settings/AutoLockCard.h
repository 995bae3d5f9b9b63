// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/Card.h"

class Preferences;
class QuickButtons;
class Slider;
class TextLabel;
class Toggle;

/// What locks the vault besides its user: time without input, and the session's own lock.
class AutoLockCard : public Card {
    Q_OBJECT

public:
    explicit AutoLockCard(Preferences& preferences, QWidget* parent = nullptr);

private:
    void arrange();
    void connectControls();
    void showMinutes();
    void showSession();

    Preferences& m_preferences;
    TextLabel* m_value;
    Slider* m_slider;
    QuickButtons* m_quickTimes;
    Toggle* m_withSession;
};
