// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/Card.h"

#include <string>

class Button;
class ClipboardService;
class IconButton;
class Paragraph;
class SecretField;
class TextField;

/// One custom field of an entry's form: its name, its value, whether it is protected, and the way to be rid of it.
class CustomFieldRow : public QWidget {
    Q_OBJECT

public:
    struct Value {
        std::string key{};
        std::string value{};
        bool isProtected = false;
    };

    CustomFieldRow(const Value& value, ClipboardService& clipboard, QWidget* parent = nullptr);

    /// As it is in the form. The caller wipes the text of a protected value.
    [[nodiscard]] Value value() const;
    [[nodiscard]] TextField* keyField() const noexcept { return m_key; }
    [[nodiscard]] IconButton* removeButton() const noexcept { return m_remove; }

signals:
    void removed();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange(bool isStacked);
    void tellName();
    void showProtection();

    TextField* m_key;
    SecretField* m_value;
    IconButton* m_protection;
    IconButton* m_remove;
    bool m_isProtected;
};

/// The card of an entry's custom fields.
class CustomFieldsCard : public Card {
    Q_OBJECT

public:
    /// What is copied of protected values goes through `clipboard`.
    explicit CustomFieldsCard(ClipboardService& clipboard, QWidget* parent = nullptr);

    CustomFieldRow& add(const CustomFieldRow::Value& value);
    /// In the order of the form.
    [[nodiscard]] const QList<CustomFieldRow*>& rows() const noexcept { return m_rows; }

signals:
    /// The user has added a row, or taken one away.
    void rowsChanged();

private:
    void addEmpty();
    void remove(CustomFieldRow* row);
    void showEmptiness();

    ClipboardService& m_clipboard;
    Button* m_add;
    Paragraph* m_nothing;
    QList<CustomFieldRow*> m_rows;
};
