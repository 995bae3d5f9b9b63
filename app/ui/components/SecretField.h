// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/TextField.h"

#include <string>

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
    /// The text for the vault. The caller wipes it.
    [[nodiscard]] std::string secret() const;

    /// Whether the text is masked at all: one that is no secret shows, and there is no eye.
    void setMasking(bool isMasking);

signals:
    void revealedChanged(bool isRevealed);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void showRevealed();
    void showLetters();

    IconButton* m_eye;
    bool m_isRevealed = false;
    bool m_isMasking = true;
};
