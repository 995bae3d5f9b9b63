// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/Sheet.h"

/// The sheet that asks before another vault takes the place of one with unsaved work. Return saves and opens, Escape
/// leaves everything as it is.
class OpenQuestion : public SheetCard {
    Q_OBJECT

public:
    /// What would be left behind.
    struct Unsaved {
        bool vault;
        bool form;  // which a save of the vault does not take along
    };

    OpenQuestion(const QString& fileName, Unsaved unsaved, QWidget* parent = nullptr);

signals:
    void saveWanted();
    void openWanted();

private:
    void arrange(const QString& title, const QString& text, Unsaved unsaved);
};
