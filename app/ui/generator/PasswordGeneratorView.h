// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/Environment.h"
#include "app/ui/components/Sheet.h"
#include "core/generator/PasswordGenerator.h"
#include "core/model/SecureString.h"
#include "core/model/UUID.h"

#include <optional>

class Card;
class EyeButton;
class SelectableSecretText;
class QuickButtons;
class Slider;
class TextLabel;

/// The sheet that makes a fresh password at each change of what it is made of, and copies it or writes it into an
/// entry. What is neither copied nor applied is gone with the sheet; the choices stay in the preferences.
class PasswordGeneratorView : public SheetScaffold {
    Q_OBJECT

public:
    /// `applyTo` is the entry that takes the password; without one the way out is the clipboard.
    PasswordGeneratorView(const Environment& environment, const std::optional<UUID>& applyTo,
                          QWidget* parent = nullptr);

private:
    using Choice = bool PasswordGenerator::Options::*;

    [[nodiscard]] Card* makePreview();
    [[nodiscard]] Card* makeLength();
    [[nodiscard]] Card* makeCharacterSets();
    void connectControls();

    [[nodiscard]] bool anySetEnabled() const;
    void setOptions(const PasswordGenerator::Options& options);
    void setLength(int length);
    void regenerate();
    void showOptions();
    void setRevealed(bool isRevealed);

    void copy() const;
    void confirm();
    void apply(const UUID& entryID);
    void closeSheet();

    Environment m_environment;
    std::optional<UUID> m_applyTo;
    PasswordGenerator::Options m_options;
    SecureString m_generated;
    SelectableSecretText* m_preview = nullptr;
    EyeButton* m_eye = nullptr;
    TextLabel* m_lengthText = nullptr;
    Slider* m_length = nullptr;
    QuickButtons* m_quickLengths = nullptr;
    TextLabel* m_warning = nullptr;
};
