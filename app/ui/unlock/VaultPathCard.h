// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/Card.h"

#include <filesystem>

class TextLabel;

/// Which vault the lock card is for, and the button that chooses another one.
class VaultPathCard : public Card {
    Q_OBJECT

public:
    explicit VaultPathCard(QWidget* parent = nullptr);

    void showPath(const std::filesystem::path& path);

signals:
    void changeWanted();

private:
    TextLabel* m_fileName;
    TextLabel* m_folder;
};
