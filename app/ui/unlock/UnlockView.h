// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/unlock/LockCard.h"

class AppState;
class KeyFileField;
class MasterPasswordFields;
class NoVaultView;
class ShakingBanner;
class TextLabel;
class UnlockActions;
class VaultPathCard;

/// The card that the window shows while locked: choose a vault, open it, or seal a new one.
class UnlockView : public LockCard {
    Q_OBJECT

public:
    explicit UnlockView(AppState& state, QWidget* parent = nullptr);

    /// Takes up the form from the start, as after a lock.
    void startOver();
    /// Shows the derivation at hand in place of the buttons, and holds back the form meanwhile.
    void setDeriving(bool isDeriving);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void arrange();
    [[nodiscard]] QWidget* makeHeader();
    [[nodiscard]] QWidget* makeForm();
    void connectControls();

    void takeUpDatabase();
    void showDatabase();
    void showMode();
    void showSubmit();
    void showError();
    void answerError();
    void answerFile();
    void showWhetherAway();

    void submit();
    void openOrSeal();
    void chooseDatabase();
    void chooseNewDatabase();
    void chooseKeyFile();
    [[nodiscard]] bool canSubmit() const;

    AppState& m_state;
    bool m_isCreating = false;
    bool m_isAway = false;
    bool m_isBusy = false;

    TextLabel* m_subtitle;
    VaultPathCard* m_path;
    MasterPasswordFields* m_password;
    KeyFileField* m_keyFile;
    ShakingBanner* m_banner;
    UnlockActions* m_actions;
    QWidget* m_form = nullptr;
    ShakingBanner* m_noVaultBanner;
    NoVaultView* m_noVault;
};
