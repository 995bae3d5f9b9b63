// SPDX-License-Identifier: MIT
#include "app/ui/unlock/MasterPasswordFields.h"

#include "app/ui/components/BareLayout.h"
#include "app/ui/components/FormField.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/SecretField.h"
#include "app/ui/components/StrengthMeter.h"
#include "app/ui/theme/Theme.h"

namespace {

constexpr int confirmationSpacing = 10;

}  // namespace

MasterPasswordFields::MasterPasswordFields(int spacing, QWidget* parent)
    : QWidget(parent),
      m_password(new SecretField(QStringLiteral("Ana parola"))),
      m_confirmation(new SecretField(QStringLiteral("Parolayı doğrula"))),
      m_confirmationBlock(new QWidget),
      m_strength(new StrengthMeter),
      m_mismatch(new TextLabel(QStringLiteral("Parolalar eşleşmiyor."), BrandFont::label(), Palette::danger)) {
    for (auto* const field : {m_password, m_confirmation}) {
        field->setSize(TextField::Size::large);
        connect(field, &SecretField::textChanged, this, &MasterPasswordFields::answerText);
    }
    connect(m_password, &SecretField::revealedChanged, m_confirmation, &SecretField::setRevealed);
    connect(m_confirmation, &SecretField::revealedChanged, m_password, &SecretField::setRevealed);
    m_confirmation->setPlaceholderText(QStringLiteral("Tekrar yaz"));

    auto* const confirmation = bareColumn(m_confirmationBlock, confirmationSpacing);
    confirmation->addWidget(new FormField(QStringLiteral("Parolayı doğrula"), m_confirmation));
    confirmation->addWidget(m_strength);
    confirmation->addWidget(m_mismatch);
    auto* const column = bareColumn(this, spacing);
    column->addWidget(new FormField(QStringLiteral("Ana parola"), m_password));
    column->addWidget(m_confirmationBlock);
    setCreating(false);
}

void MasterPasswordFields::setCreating(bool isCreating) {
    m_isCreating = isCreating;
    m_password->setPlaceholderText(isCreating ? QStringLiteral("Güçlü bir parola seç") : QStringLiteral("Ana parolan"));
    m_confirmationBlock->setVisible(isCreating);
    showComparison();
}

bool MasterPasswordFields::isEmpty() const {
    return m_password->text().isEmpty();
}

bool MasterPasswordFields::isConfirmed() const {
    return m_password->text() == m_confirmation->text();
}

std::string MasterPasswordFields::secret() const {
    return m_password->secret();
}

void MasterPasswordFields::conceal() {
    m_password->setRevealed(false);
}

void MasterPasswordFields::clear() {
    clearPassword();
    m_confirmation->setSecret({});
}

void MasterPasswordFields::clearPassword() {
    m_password->setSecret({});
}

void MasterPasswordFields::focusPassword() {
    m_password->setFocus();
}

void MasterPasswordFields::answerText() {
    showComparison();
    emit textChanged();
}

void MasterPasswordFields::showComparison() {
    m_mismatch->setVisible(!m_confirmation->text().isEmpty() && !isConfirmed());
    m_strength->setVisible(m_isCreating && !isEmpty());
    m_strength->showStrengthOf(m_isCreating ? m_password->text() : QString());
}
