// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/TextField.h"

class IconButton;

/// A text field for a secret, with an eye at its end that shows and hides it.
/// Hidden or shown, its text is never offered for dragging, prediction, undo after use or the primary selection.
class SecretField : public TextField {
    Q_OBJECT

public:
    explicit SecretField(const QString& name, QWidget* parent = nullptr);
    ~SecretField() override;

    [[nodiscard]] bool isRevealed() const noexcept { return m_isRevealed; }
    void setRevealed(bool isRevealed);

    /// Replaces the text and forgets the former one, its undo history included.
    void setSecret(const QString& secret);

signals:
    void revealedChanged(bool isRevealed);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void showRevealed();

    IconButton* m_eye;
    bool m_isRevealed = false;
};
