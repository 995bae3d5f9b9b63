// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/Button.h"

/// A button that copies a field, and says so for a moment with a tick in place of its symbol, or of its text where it
/// has none. Several of them may carry the same word; the accessible description says which field each is for.
class CopyButton : public Button {
    Q_OBJECT

public:
    /// "Kopyala", small and without ground, at the end of a field's row.
    explicit CopyButton(const QString& field, QWidget* parent = nullptr);
    /// A framed one with a symbol.
    CopyButton(const QString& text, const QString& symbol, const QString& field, QWidget* parent = nullptr);

private:
    void confirmWhenClicked();
};
