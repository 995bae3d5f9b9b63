// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class AppState;
class Button;
class DerivationProgress;

/// The lock card's last row: the button that opens or seals the vault, and the ways to another one; while a key is
/// derived, its progress in their place.
class UnlockActions : public QWidget {
    Q_OBJECT

public:
    explicit UnlockActions(AppState& state, QWidget* parent = nullptr);

    void setCreating(bool isCreating);
    void setSubmitEnabled(bool isEnabled);
    /// Shows the progress, with the focus on it, or the buttons.
    void setDeriving(bool isDeriving);
    [[nodiscard]] bool isDeriving() const;

signals:
    void submitWanted();
    void openWanted();
    void createWanted();

private:
    [[nodiscard]] QWidget* makeButtons();

    Button* m_submit;
    QWidget* m_buttons;
    DerivationProgress* m_progress;
};
