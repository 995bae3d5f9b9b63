// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/Environment.h"
#include "app/ui/components/Sheet.h"
#include "core/model/KdbxDatabase.h"

#include <variant>

class IconPicker;
class Paragraph;
class SequenceCard;
class TextArea;
class TextField;

/// The sheet in which a group is made, changed or deleted. The vault is changed when the form is confirmed.
class GroupEditView : public SheetScaffold {
    Q_OBJECT

public:
    /// A new group under that parent.
    struct Create {
        UUID parentID;
    };
    /// A change of that group.
    struct Edit {
        KdbxGroup group;
    };
    using Mode = std::variant<Create, Edit>;

    GroupEditView(const Environment& environment, Mode mode, QWidget* parent = nullptr);

    /// Takes note of a vault that has changed behind the form, which keeps what was typed.
    void followVault();

private:
    void makeControls();
    void arrange();
    [[nodiscard]] QWidget* makeBasicsCard();
    [[nodiscard]] QWidget* makeDeleteSection();
    void connectControls();
    void load();

    void showConfirm();
    void showEntryCount();

    [[nodiscard]] bool isEditing() const noexcept { return std::holds_alternative<Edit>(m_mode); }
    [[nodiscard]] bool isRoot() const;
    [[nodiscard]] KdbxGroup editedGroup() const;
    void keepTyped();
    bool applyTyped(KdbxDatabase& database) const;
    void commit();
    void deleteGroup();
    void dismiss();

    AppState& m_state;
    Mode m_mode;
    KdbxGroup m_untouched;  // what the form gives as long as nothing is typed
    IconPicker* m_icon = nullptr;
    TextField* m_name = nullptr;
    TextArea* m_notes = nullptr;
    SequenceCard* m_sequence = nullptr;
    Paragraph* m_entryCount = nullptr;
};
