// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <string>

class SecretField;
class StrengthMeter;
class TextLabel;

/// The fields for the master password: one for a vault that exists; for a new one a second that must repeat it, and the
/// password's strength.
class MasterPasswordFields : public QWidget {
    Q_OBJECT

public:
    /// `spacing` is what the fields of the form around these have between them.
    explicit MasterPasswordFields(int spacing, QWidget* parent = nullptr);

    void setCreating(bool isCreating);

    [[nodiscard]] bool isEmpty() const;
    /// Whether the second field repeats the first.
    [[nodiscard]] bool isConfirmed() const;
    /// In UTF-8; the caller wipes it.
    [[nodiscard]] std::string secret() const;

    void conceal();
    void clear();
    /// Clears the password and leaves the field that confirms it.
    void clearPassword();
    void focusPassword();

signals:
    void textChanged();

private:
    void answerText();
    void showComparison();

    bool m_isCreating = false;
    SecretField* m_password;
    SecretField* m_confirmation;
    QWidget* m_confirmationBlock;
    StrengthMeter* m_strength;
    TextLabel* m_mismatch;
};
