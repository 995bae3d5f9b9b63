// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/Environment.h"
#include "app/ui/components/Sheet.h"
#include "core/model/KdbxDatabase.h"

#include <variant>

class CustomFieldsCard;
class DateTimeField;
class IconPicker;
class Paragraph;
class SecretField;
class SequenceCard;
class StrengthMeter;
class TextArea;
class TextField;
class Toggle;

/// The sheet in which an entry is made or changed. The vault is changed when the form is confirmed, and not before.
class EntryEditView : public SheetScaffold {
    Q_OBJECT

public:
    /// A new entry for that group.
    struct Create {
        UUID groupID;
    };
    /// A change of that entry.
    struct Edit {
        KdbxEntry entry;
    };
    using Mode = std::variant<Create, Edit>;

    EntryEditView(const Environment& environment, Mode mode, QWidget* parent = nullptr);

    /// Takes note of a vault that has changed behind the form, which keeps what was typed.
    void followVault();

private:
    void makeControls();
    void arrange();
    [[nodiscard]] QWidget* makeBasicsCard();
    [[nodiscard]] QWidget* makePasswordCard();
    [[nodiscard]] QWidget* makeNotesCard();
    void connectControls();
    void load();

    void showTitle();
    void showStrength();
    void showExpiry();
    void showAutoType();

    void generatePassword();
    void openGenerator();

    [[nodiscard]] KdbxEntry editedEntry() const;
    void takeTags(KdbxEntry& entry) const;
    void takeCustomFields(KdbxEntry& entry) const;
    void keepTyped();
    bool applyTyped(KdbxDatabase& database) const;
    void commit();
    void dismiss();

    AppState& m_state;
    Preferences& m_preferences;
    ClipboardService& m_clipboard;
    Mode m_mode;
    KdbxEntry m_untouched;  // what the form gives as long as nothing is typed
    IconPicker* m_icon = nullptr;
    TextField* m_title = nullptr;
    TextField* m_username = nullptr;
    TextField* m_url = nullptr;
    TextField* m_tags = nullptr;
    Toggle* m_expires = nullptr;
    DateTimeField* m_expiryDate = nullptr;
    SecretField* m_password = nullptr;
    StrengthMeter* m_strength = nullptr;
    Toggle* m_autoTypeEnabled = nullptr;
    SequenceCard* m_sequence = nullptr;
    Paragraph* m_defaultSequence = nullptr;
    CustomFieldsCard* m_customFields = nullptr;
    TextArea* m_notes = nullptr;
};
