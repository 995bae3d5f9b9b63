// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/TextField.h"

#include <functional>
#include <string>
#include <string_view>

class EyeButton;

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

    /// Where a shown secret goes that the user copies or cuts. Without it, none is copied.
    void setCopying(std::function<void(std::string_view)> copy);

    /// Whether the text is masked at all: one that is no secret shows, and there is no eye.
    void setMasking(bool isMasking);

public slots:
    /// Copies what is selected as the secret that it is, in place of the line's own verb, which menus call by its name.
    void copy() const override;
    /// Likewise.
    void cut();

signals:
    void revealedChanged(bool isRevealed);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void showRevealed();
    void showLetters();
    [[nodiscard]] bool showsSecret() const noexcept { return m_isRevealed && m_isMasking; }
    bool select(const QKeyEvent& event);
    bool deleteLine(const QKeyEvent& event);

    EyeButton* m_eye;
    std::function<void(std::string_view)> m_copy;
    bool m_isRevealed = false;
    bool m_isMasking = true;
};
