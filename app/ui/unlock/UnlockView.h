// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollArea>

#include <filesystem>
#include <optional>

class AppState;
class Button;
class DerivationProgress;
class FormField;
class IconButton;
class SecretField;
class ShakingBanner;
class StrengthMeter;
class TextLabel;
class QVBoxLayout;

/// The card that the window shows while locked: choose a vault, open it, or seal a new one.
class UnlockView : public QScrollArea {
    Q_OBJECT

public:
    explicit UnlockView(AppState& state, QWidget* parent = nullptr);
    ~UnlockView() override;

    /// The card's height at its fixed width, as it is now.
    [[nodiscard]] int cardHeight() const;
    /// Takes up the form from the start, as after a lock.
    void startOver();
    /// Shows the derivation at hand in place of the buttons, and holds back the form meanwhile.
    void setDeriving(bool isDeriving);

    static constexpr int cardWidth = 480;

signals:
    void cardHeightChanged(int height);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] int barWidth() const;
    void makeRoomForBar();
    void revealFocus();
    void makeControls();
    void arrange();
    [[nodiscard]] QWidget* makeHeader();
    [[nodiscard]] QWidget* makeForm();
    [[nodiscard]] QWidget* makePathCard();
    [[nodiscard]] QWidget* makeConfirmation();
    [[nodiscard]] QWidget* makeKeyFileField();
    [[nodiscard]] QWidget* makeActionRow();
    [[nodiscard]] QWidget* makeChooser();
    [[nodiscard]] QWidget* makeFooter();
    void connectControls();

    void takeUpDatabase();
    void showDatabase();
    void showMode();
    void showKeyFile();
    void showSubmit();
    void showError();
    void answerError();
    void answerFile();

    void submit();
    void openOrSeal();
    void chooseDatabase();
    void chooseNewDatabase();
    void chooseKeyFile();
    void setKeyFile(std::optional<std::filesystem::path> file);
    [[nodiscard]] bool canSubmit() const;

    AppState& m_state;
    std::optional<std::filesystem::path> m_keyFile;
    bool m_isCreating = false;
    bool m_isBusy = false;

    QWidget* m_card;
    TextLabel* m_subtitle;
    QWidget* m_form = nullptr;
    QWidget* m_chooser = nullptr;
    TextLabel* m_fileName;
    TextLabel* m_folder;
    SecretField* m_password;
    SecretField* m_confirmation;
    QWidget* m_confirmationBlock = nullptr;
    StrengthMeter* m_strength;
    TextLabel* m_mismatch;
    Button* m_chooseKeyFile;
    QWidget* m_chosenKeyFile = nullptr;
    TextLabel* m_keyFileName;
    FormField* m_keyFileField = nullptr;
    ShakingBanner* m_banner;
    ShakingBanner* m_chooserBanner;
    Button* m_submit;
    QWidget* m_actions = nullptr;
    DerivationProgress* m_progress;
};
