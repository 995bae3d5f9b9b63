// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/FormField.h"

#include <filesystem>
#include <optional>

class Button;
class TextLabel;

/// The field for the key file: a button that chooses one, or the chosen one with a button that removes it.
class KeyFileField : public FormField {
    Q_OBJECT

public:
    explicit KeyFileField(QWidget* parent = nullptr);

    [[nodiscard]] const std::optional<std::filesystem::path>& file() const noexcept { return m_file; }
    void setFile(std::optional<std::filesystem::path> file);

signals:
    void chooseWanted();
    void fileChanged();

private:
    KeyFileField(QWidget* content, QWidget* parent);

    std::optional<std::filesystem::path> m_file;
    Button* m_choose;
    QWidget* m_chosen;
    TextLabel* m_name;
};
