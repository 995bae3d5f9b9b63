// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class AppState;
class Button;
class ProgressBar;
class TextLabel;

/// How far the key derivation at hand is, and the button that gives it up.
class DerivationProgress : public QWidget {
    Q_OBJECT

public:
    explicit DerivationProgress(AppState& state, QWidget* parent = nullptr);

    /// The stop that has the keyboard first: not the button, which a second Return would press.
    [[nodiscard]] QWidget* firstStop() const;
    /// The button of the lock card's height.
    void setLarge(bool isLarge);

private:
    void arrange();
    void showFraction();

    AppState& m_state;
    TextLabel* m_text;
    TextLabel* m_percent;
    ProgressBar* m_bar;
    Button* m_giveUp;
};
