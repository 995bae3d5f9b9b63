// SPDX-License-Identifier: MIT
#include "app/ui/components/SequenceCard.h"

#include "app/ui/components/FormField.h"
#include "app/ui/components/TextField.h"
#include "app/ui/components/Toggle.h"
#include "core/autotype/AutoTypeService.h"

#include <QVBoxLayout>

SequenceCard::SequenceCard(const QString& question, const QString& hint, QWidget* parent)
    : Card(QStringLiteral("Otomatik yazma"), parent),
      m_switch(new Toggle(question)),
      m_text(new TextField(QStringLiteral("Sekans"))),
      m_field(new FormField(QStringLiteral("Sekans"), m_text)) {
    m_text->setMono(true);
    suggest(AutoTypeService::defaultSequence);
    m_field->setHint(hint);
    content()->addWidget(m_switch);
    content()->addWidget(m_field);
    connect(m_switch, &Toggle::toggled, this, &SequenceCard::showField);
    connect(m_switch, &Toggle::toggled, this, &SequenceCard::inheritedChanged);
    showField();
}

std::optional<std::string> SequenceCard::sequence() const {
    return isInherited() ? std::nullopt : std::optional(m_text->wholeText());
}

void SequenceCard::setSequence(const std::optional<std::string>& sequence) {
    m_switch->setChecked(sequence.has_value());
    if (sequence)
        m_text->setWholeText(*sequence);
}

void SequenceCard::suggest(std::string_view sequence) {
    m_text->setWholeText(sequence);
}

bool SequenceCard::isInherited() const {
    return !m_switch->isChecked();
}

void SequenceCard::setOffered(bool isOffered) {
    m_isOffered = isOffered;
    showField();
}

void SequenceCard::showField() {
    m_switch->setVisible(m_isOffered);
    m_field->setVisible(m_isOffered && !isInherited());
}
