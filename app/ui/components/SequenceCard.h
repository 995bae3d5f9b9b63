// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/Card.h"

#include <optional>
#include <string>
#include <string_view>

class FormField;
class TextField;
class Toggle;

/// The card of a form in which an auto-type sequence is inherited or typed.
class SequenceCard : public Card {
    Q_OBJECT

public:
    /// `question` is the switch's label, `hint` the line below the field. The field suggests the program's own
    /// sequence.
    SequenceCard(const QString& question, const QString& hint, QWidget* parent = nullptr);

    /// The typed sequence; none is inherited.
    [[nodiscard]] std::optional<std::string> sequence() const;
    void setSequence(const std::optional<std::string>& sequence);
    /// What the field holds until it is given or typed another.
    void suggest(std::string_view sequence);

    [[nodiscard]] bool isInherited() const;
    /// Whether switch and field show at all.
    void setOffered(bool isOffered);

signals:
    void inheritedChanged();

private:
    void showField();

    Toggle* m_switch;
    TextField* m_text;
    FormField* m_field;
    bool m_isOffered = true;
};
